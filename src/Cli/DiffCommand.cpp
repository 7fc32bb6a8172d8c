#include "Cli/DesignArguments.h"
#include "Design/DesignFacts.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

namespace ChipLoom {

namespace {

struct KindRow
{
    DesignFact::Kind kind;
    const char *word;    ///< in JSON
    const char *subject; ///< %1 is the place
};

using Kind = DesignFact::Kind;
constexpr std::array<KindRow, 11> Kinds{{
    {Kind::Device, "device", QT_TRANSLATE_NOOP("Cli", "Device (%1)")},
    {Kind::Pin, "pin", QT_TRANSLATE_NOOP("Cli", "Pin %1")},
    {Kind::Label, "label", QT_TRANSLATE_NOOP("Cli", "Label of %1")},
    {Kind::Mode, "mode", QT_TRANSLATE_NOOP("Cli", "Mode %1")},
    {Kind::Parameter, "parameter", QT_TRANSLATE_NOOP("Cli", "Parameter %1")},
    {Kind::Interrupt, "interrupt", QT_TRANSLATE_NOOP("Cli", "Interrupt %1")},
    {Kind::PinSetting, "pinSetting", QT_TRANSLATE_NOOP("Cli", "Pin setting %1")},
    {Kind::Dma, "dma", QT_TRANSLATE_NOOP("Cli", "DMA %1")},
    {Kind::Clock, "clock", QT_TRANSLATE_NOOP("Cli", "Clock value %1")},
    {Kind::Project, "project", QT_TRANSLATE_NOOP("Cli", "Project value %1")},
    {Kind::CallOrder, "call", QT_TRANSLATE_NOOP("Cli", "Call of %1")},
}};

const KindRow &rowOf(Kind kind)
{
    return Kinds.at(static_cast<size_t>(kind));
}

QString sentence(const DesignDifference &difference)
{
    const QString subject = QCoreApplication::translate("Cli", rowOf(difference.kind).subject).arg(difference.place);
    if (difference.second.isEmpty())
        return QCoreApplication::translate("Cli", "%1: %2, only in the first design").arg(subject, difference.first);
    if (difference.first.isEmpty())
        return QCoreApplication::translate("Cli", "%1: %2, only in the second design").arg(subject, difference.second);
    return QCoreApplication::translate("Cli", "%1: %2 in the first design, %3 in the second")
        .arg(subject, difference.first, difference.second);
}

ExitCode diff(CommandContext &context)
{
    CommandDesign first(context);
    CommandDesign second(context);
    ExitCode code = openDesignFile(context, context.arguments.at(0), first);
    if (code == ExitCode::Success)
        code = openDesignFile(context, context.arguments.at(1), second);
    if (code != ExitCode::Success)
        return code;
    const QList<DesignDifference> differences = compareDesigns(first, second);
    if (context.json) {
        QJsonArray list;
        for (const DesignDifference &difference : differences)
            list.append(QJsonObject{{QStringLiteral("kind"), QLatin1String(rowOf(difference.kind).word)},
                                    {QStringLiteral("place"), difference.place},
                                    {QStringLiteral("first"), difference.first},
                                    {QStringLiteral("second"), difference.second}});
        context.out << QString::fromUtf8(QJsonDocument(list).toJson());
    } else {
        for (const DesignDifference &difference : differences)
            context.out << sentence(difference) << '\n';
    }
    return differences.isEmpty() ? ExitCode::Success : ExitCode::Problem;
}

} // namespace

extern const Command DiffCommand;
const Command DiffCommand{
    .name = "diff",
    .arguments = "FILE FILE",
    .minArguments = 2,
    .maxArguments = 2,
    .summary = QT_TRANSLATE_NOOP("Cli", "Tell what two design files say differently."),
    .details = QT_TRANSLATE_NOOP("Cli", "Compares modes, parameters, pins, clocks, lists and project, not the text of "
                                        "the files.\nThe exit code is 1 if they differ."),
    .options = {},
    .run = diff,
};

} // namespace ChipLoom
