#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace ChipLoom {

/// A text cut once at its outermost sections, which are then found by their name and edited apart from the rest. A copy
/// shares what has not been edited.
class SectionedText
{
public:
    SectionedText() = default;
    explicit SectionedText(const QString &text);

    /// The outermost section that has the name or holds the only section of that name, with its markers and the line
    /// breaks behind it: a text of its own to be edited, which keeps its place and name whatever becomes of it. Where
    /// there is none an empty text, in which no edit finds anything.
    QString &section(const QString &name);
    /// Whether an outermost section has the name.
    bool contains(const QString &name) const;
    /// The names of the outermost sections.
    QStringList names() const;

    /// Tries an edit, `bool (QString &)`, on the sections and what stands between them, in the order of the text, until
    /// one says true. False if none does.
    template <typename Edit> bool editFirst(Edit edit)
    {
        for (QString &part : m_parts) {
            if (edit(part))
                return true;
        }
        return false;
    }

    QString joined() const;

private:
    struct Place
    {
        int part = -1; ///< none where the name stands in more than one
        bool outermost = false;
    };

    std::vector<QString> m_parts;   ///< outermost sections, and what stands between them
    QHash<QString, Place> m_places; ///< of all sections by their name
    QString m_none;
};

/// A template of the resources, read and cut once for the whole run of the program; null where there is none.
const SectionedText *codeTemplate(const QString &path);

/// A text cut at its sections. What was cut lately is kept for the whole run of the program: functions of instances
/// come out of the templates unchanged, generation after generation.
SectionedText cutAtSections(const QString &text);

/// `GenerateCode_Handle_Function` for a section that is outermost, or the only one of its name.
bool GenerateCode_Handle_Function(SectionedText &text, const QString &name, bool keep);

} // namespace ChipLoom
