#include "Model/ShareParameter.h"

namespace ChipLoom {

LANGUAGE GlobalLanguage::g_CurrentLanguage = UI_EN;

namespace {

bool sharePiece(const QStringList &a, const QStringList &b)
{
    for (const QString &piece : a) {
        if (b.contains(piece))
            return true;
    }
    return false;
}

QStringList pinAlternatives(const QString &trimmed)
{
    return trimmed.section(QLatin1Char(' '), 0, 0).trimmed().split(QLatin1Char('/'));
}

QStringList signalPieces(const QString &name)
{
    QStringList pieces = name.split(QLatin1Char(';'));
    for (QString &piece : pieces)
        piece = piece.trimmed();
    return pieces;
}

} // namespace

bool IsPinNameSame(const QString &a, const QString &b)
{
    const QString left = a.trimmed();
    const QString right = b.trimmed();
    return left == right || sharePiece(pinAlternatives(left), pinAlternatives(right));
}

bool IsSignalSame(const QString &a, const QString &b)
{
    return a.trimmed() == b.trimmed() || sharePiece(signalPieces(a), signalPieces(b));
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
