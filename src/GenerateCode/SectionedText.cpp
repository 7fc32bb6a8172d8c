#include "GenerateCode/SectionedText.h"

#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/TextEngine.h"

#include <QCache>
#include <QMutex>

#include <memory>

namespace ChipLoom {

namespace {

constexpr int MostKept = 1'000'000; // characters; a large design has some 100,000

/// The stretches between the markers of user blocks, asked for from front to back.
class UserStretches
{
public:
    explicit UserStretches(const QString &text) : m_text(text) { find(0); }

    /// The end of the stretch that `at` lies in, or `at`.
    int skipped(int at)
    {
        while (m_end >= 0 && at > m_end)
            find(m_end);
        return m_end >= 0 && at > m_start ? m_end : at;
    }

private:
    void find(int from)
    {
        m_start = m_text.indexOf(QLatin1String("add user code begin"), from);
        m_end = m_start < 0 ? -1 : m_text.indexOf(QLatin1String("add user code end"), m_start);
    }

    const QString &m_text;
    int m_start = -1;
    int m_end = -1;
};

/// The line that opens or closes a section.
struct MarkerLine
{
    int start = 0;
    int end = 0; ///< behind its line break
    bool closes = false;
    QStringView name;
};

// What a user writes is no marker, whatever it looks like.
std::vector<MarkerLine> markerLines(const QString &text)
{
    std::vector<MarkerLine> lines;
    UserStretches user(text);
    for (int at = text.indexOf(QLatin1Char('[')); at >= 0; at = text.indexOf(QLatin1Char('['), at + 1)) {
        if (const int behind = user.skipped(at); behind != at) {
            at = behind;
            continue;
        }
        const bool closes = text.midRef(at + 1, 1) == QLatin1String("/");
        const int nameStart = at + (closes ? 3 : 2);
        const int bracket =
            text.midRef(nameStart - 1, 1) == QLatin1String("#") ? text.indexOf(QLatin1Char(']'), at) : -1;
        const int end = bracket < 0 ? -1 : lineEndBehind(text, bracket + 1);
        if (end >= 0)
            lines.push_back({at, end, closes, QStringView(text).mid(nameStart, bracket - nameStart)});
    }
    return lines;
}

} // namespace

SectionedText::SectionedText(const QString &text)
{
    const std::vector<MarkerLine> lines = markerLines(text);
    QHash<QStringView, size_t> lastClosing;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].closes)
            lastClosing.insert(lines[i].name, i);
    }
    int plain = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        const size_t close = lastClosing.value(lines[i].name, 0);
        if (lines[i].closes || close <= i || lines[close].start == lines[i].end)
            continue;
        m_parts.push_back(text.mid(plain, lines[i].start - plain));
        const int part = static_cast<int>(m_parts.size());
        for (size_t inner = i; inner < close; ++inner) {
            if (lines[inner].closes)
                continue;
            const QString name = lines[inner].name.toString();
            const auto known = m_places.constFind(name);
            if (lastClosing.value(lines[inner].name, inner) > close ||
                (known != m_places.constEnd() && known->part != part))
                m_places.insert(name, {});
            else if (known == m_places.constEnd())
                m_places.insert(name, {part, inner == i});
        }
        plain = lines[close].end;
        while (plain < text.size() && text.at(plain) == QLatin1Char('\n'))
            ++plain;
        m_parts.push_back(text.mid(lines[i].start, plain - lines[i].start));
        i = close;
    }
    m_parts.push_back(text.mid(plain));
}

QString &SectionedText::section(const QString &name)
{
    const int part = m_places.value(name).part;
    m_none.clear();
    return part < 0 ? m_none : m_parts[static_cast<size_t>(part)];
}

bool SectionedText::contains(const QString &name) const
{
    return m_places.value(name).outermost;
}

QStringList SectionedText::names() const
{
    QStringList names;
    for (auto place = m_places.begin(); place != m_places.end(); ++place) {
        if (place->outermost)
            names.append(place.key());
    }
    return names;
}

QString SectionedText::joined() const
{
    int length = 0;
    for (const QString &part : m_parts)
        length += part.size();
    QString text;
    text.reserve(length);
    for (const QString &part : m_parts)
        text += part;
    return text;
}

const SectionedText *codeTemplate(const QString &path)
{
    static QMutex mutex;
    static QHash<QString, std::shared_ptr<const SectionedText>> templates;
    const QMutexLocker lock(&mutex);
    auto entry = templates.find(path);
    if (entry == templates.end()) {
        const TextRead read = readSourceText(path);
        entry = templates.insert(path, read.ok ? std::make_shared<const SectionedText>(read.text) : nullptr);
    }
    return entry->get();
}

SectionedText cutAtSections(const QString &text)
{
    static QMutex mutex;
    static QCache<QString, SectionedText> cuts(MostKept);
    const QMutexLocker lock(&mutex);
    if (const SectionedText *known = cuts.object(text))
        return *known;
    SectionedText cut(text);
    cuts.insert(text, new SectionedText(cut), text.size());
    return cut;
}

bool GenerateCode_Handle_Function(SectionedText &text, const QString &name, bool keep)
{
    return GenerateCode_Handle_Function(text.section(name), name, keep);
}

} // namespace ChipLoom
