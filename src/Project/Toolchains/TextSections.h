#pragma once

#include "Project/ProjectOrder.h"

#include <functional>

namespace ChipLoom {

/// A text file of a project whose sections are rewritten one by one. A section that is not there in its known form is
/// left, and becomes a note: a user may have taken it over.
class TextSections
{
public:
    /// Reads a file below the project's root. False, with `account.detail`, if that is impossible.
    bool read(const ProjectOrder &order, const QString &file, BuilderAccount &account);
    bool write(const ProjectOrder &order, BuilderAccount &account);

    /// Replaces the first match of `expression` (a dot matches no line end); `what` names the section in the note.
    void set(const QString &what, const QString &expression, const QString &by, BuilderAccount &account);
    /// The same with what group 1 of the match, the lines of the list, becomes.
    void edit(const QString &what, const QString &expression, const std::function<QString(const QString &)> &lines,
              BuilderAccount &account);

    QString &text() { return m_text; }

private:
    QString m_file;
    QString m_text; ///< with "\n" as line end
    bool m_dosLines = false;
};

/// The entries of a list: its lines without blanks, the continuation at their end, and what stands before the entry.
QStringList listEntries(const QString &lines, const QString &prefix);

/// A list whose lines go on with a backslash, and what stands behind it.
struct ContinuedList
{
    QString lines;
    QString rest; ///< without the empty line that ends the list
};

ContinuedList continuedList(const QString &text);

} // namespace ChipLoom
