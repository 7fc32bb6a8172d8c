#include "Model/ShareParameter.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace ChipLoom {

LANGUAGE GlobalLanguage::g_CurrentLanguage = UI_EN;

namespace {

/// Whether two lists have an entry in common; blanks around an entry do not count.
bool sharePiece(QStringView a, QStringView b, QChar separator)
{
    const auto cut = [separator](QStringView &list) {
        const auto end = list.indexOf(separator);
        const QStringView piece = (end < 0 ? list : list.left(end)).trimmed();
        list = end < 0 ? QStringView() : list.mid(end + 1);
        return std::pair(piece, end >= 0);
    };
    for (bool more = true; more;) {
        QStringView piece;
        std::tie(piece, more) = cut(a);
        QStringView others = b;
        for (bool moreOthers = true; moreOthers;) {
            QStringView other;
            std::tie(other, moreOthers) = cut(others);
            if (other == piece)
                return true;
        }
    }
    return false;
}

/// Most names are one entry without blanks: they are the same if their texts are.
bool isOneEntry(const QString &name, QChar separator)
{
    return std::all_of(name.begin(), name.end(),
                       [separator](QChar c) { return c != separator && c.unicode() > ' ' && c.unicode() < 0x7f; });
}

/// The names of a pin in front of a note in brackets: "PD0/HEXT_IN".
QStringView pinNames(const QString &text)
{
    const QStringView trimmed = QStringView(text).trimmed();
    const auto end = trimmed.indexOf(QLatin1Char(' '));
    return end < 0 ? trimmed : trimmed.left(end);
}

} // namespace

bool IsPinNameSame(const QString &a, const QString &b)
{
    if (isOneEntry(a, QLatin1Char('/')) && isOneEntry(b, QLatin1Char('/')))
        return a == b;
    return QStringView(a).trimmed() == QStringView(b).trimmed() ||
           sharePiece(pinNames(a), pinNames(b), QLatin1Char('/'));
}

bool IsSignalSame(const QString &a, const QString &b)
{
    if (isOneEntry(a, QLatin1Char(';')) && isOneEntry(b, QLatin1Char(';')))
        return a == b;
    return sharePiece(a, b, QLatin1Char(';'));
}

QString GetValueByComment(const QList<PossibleValue> &list, const QString &comment)
{
    QString value;
    for (const PossibleValue &entry : list) {
        if (entry.Comment == comment)
            value = entry.Value;
    }
    return value;
}

QString GetCommentByValue(const QList<PossibleValue> &list, const QString &value)
{
    QString comment;
    for (const PossibleValue &entry : list) {
        if (entry.Value == value)
            comment = entry.Comment;
    }
    return comment;
}

} // namespace ChipLoom
