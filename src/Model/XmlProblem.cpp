#include "Model/XmlProblem.h"

#include <QCoreApplication>
#include <QDir>

namespace ChipLoom {

namespace {

QString sentence(const char *text)
{
    return QCoreApplication::translate("XmlProblem", text);
}

QString sentenceFor(const XmlProblem &problem)
{
    switch (problem.fault) {
    case XmlFault::None:
        return {};
    case XmlFault::Missing:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 does not exist."));
    case XmlFault::Unreadable:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 cannot be read: %2"));
    case XmlFault::TooLarge:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 is larger than %2 bytes and was not read."));
    case XmlFault::WrongEncoding:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 is not encoded as UTF-8. Save it as UTF-8."));
    case XmlFault::Declarations:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 has a DOCTYPE in line %2, which is not allowed."));
    case XmlFault::TooDeep:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 nests elements more than %2 deep."));
    case XmlFault::TooComplex:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 has more than %2 elements or attributes."));
    case XmlFault::Malformed:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 is damaged in line %2: %3"));
    case XmlFault::NothingListed:
        return sentence(QT_TRANSLATE_NOOP("XmlProblem", "The file %1 lists no product line with devices."));
    }
    return {};
}

} // namespace

QString XmlProblemText(const XmlProblem &problem)
{
    if (!problem)
        return {};
    const QString file = QDir::toNativeSeparators(problem.file);
    const QString text = sentenceFor(problem);
    switch (problem.fault) {
    case XmlFault::Unreadable:
        return text.arg(file, problem.detail);
    case XmlFault::TooLarge:
    case XmlFault::TooDeep:
    case XmlFault::TooComplex:
        return text.arg(file, QString::number(problem.limit));
    case XmlFault::Declarations:
        return text.arg(file, QString::number(problem.line));
    case XmlFault::Malformed:
        return text.arg(file, QString::number(problem.line), problem.detail);
    default:
        return text.arg(file);
    }
}

} // namespace ChipLoom
