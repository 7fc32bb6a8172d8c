#include "Cli/PeripheralListing.h"

#include "Cli/DesignArguments.h"
#include "Cli/TextTable.h"
#include "Design/DesignTexts.h"
#include "Design/Explanations.h"
#include "Design/ModuleConfiguration.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>

namespace ChipLoom {

namespace {

QString shown(const char *text)
{
    return QCoreApplication::translate("Cli", text);
}

QString rangeOf(const RefParameter &parameter)
{
    if (parameter.MinValue.isEmpty() && parameter.MaxValue.isEmpty())
        return {};
    return parameter.MinValue + QLatin1String("..") + parameter.MaxValue;
}

template <typename Use> void forEachModule(Design &design, const Use &use)
{
    for (const std::unique_ptr<DesignPart> &part : design.parts()) {
        if (const ModuleConfiguration *module = design.module(part->instanceName()))
            use(*module);
    }
}

// Its note, and what is wrong with it.
QStringList remarksOf(const ModuleConfiguration &module)
{
    QStringList remarks;
    const QString note = noteText(module);
    if (!note.isEmpty())
        remarks.append(note);
    QList<DesignProblem> problems;
    module.collectProblems(problems);
    for (const DesignProblem &problem : problems) {
        if (answerText(problem.reason) != note)
            remarks.append(problemText(problem));
    }
    return remarks;
}

void writeModule(const ModuleConfiguration &module, QTextStream &out)
{
    out << "  " << module.instanceName();
    if (module.GetIPStatusFlag() & IPSTATUS_ERROR)
        out << "  (" << shown(QT_TRANSLATE_NOOP("Cli", "has errors")) << ')';
    out << '\n';
    QList<QStringList> lines;
    for (const std::unique_ptr<ModeControl> &control : module.controls()) {
        if (control->isOn())
            lines.append({QLatin1String("mode/") + module.instanceName() + QLatin1Char('/') + control->modeName(),
                          control->isCheckBox() ? QStringLiteral("TRUE") : control->currentName(),
                          {},
                          {}});
    }
    for (const RefParameter &parameter : module.parameters().GetRefParameterList()) {
        if (!parameter.Visible)
            continue;
        const bool good = module.parameters().GetOneParamStatus(parameter);
        const bool warned = !module.parameters().warning(parameter.Name);
        lines.append({QLatin1String("param/") + module.instanceName() + QLatin1Char('/') + parameter.Name,
                      parameter.CurrentValue, rangeOf(parameter),
                      !good    ? shown(QT_TRANSLATE_NOOP("Cli", "not allowed"))
                      : warned ? shown(QT_TRANSLATE_NOOP("Cli", "warning"))
                               : QString()});
    }
    if (!lines.isEmpty())
        writeTable(out, lines, 4);
    for (const QString &remark : remarksOf(module))
        out << "    " << remark << '\n';
}

QString stateWord(ItemState state)
{
    switch (state) {
    case ItemState::Enabled:
        return QStringLiteral("enabled");
    case ItemState::NotOnPackage:
        return QStringLiteral("notOnPackage");
    case ItemState::ConditionNotMet:
        return QStringLiteral("conditionNotMet");
    case ItemState::PinConflict:
        return QStringLiteral("pinConflict");
    }
    return {};
}

QJsonObject modeJson(const Design &design, const ModuleConfiguration &module, const ModeControl &control)
{
    QJsonArray items;
    for (int index = 1; index < control.count(); ++index) {
        const ItemInfoStruct &item = control.items().at(index - 1);
        items.append(QJsonObject{{QStringLiteral("name"), item.Name},
                                 {QStringLiteral("state"), stateWord(item.state())},
                                 {QStringLiteral("reason"), itemExplanation(design, module, control, index).text}});
    }
    return {{QStringLiteral("name"), control.modeName()},
            {QStringLiteral("chosen"), control.currentName()},
            {QStringLiteral("open"), control.isEnabled()},
            {QStringLiteral("items"), items}};
}

QString warningText(const IP_ParamSettingConfiguration &parameters, const QString &name)
{
    const DesignAnswer warning = parameters.warning(name);
    return warning ? QString() : answerText(warning);
}

QJsonArray parametersJson(const IP_ParamSettingConfiguration &parameters)
{
    QJsonArray list;
    for (const RefParameter &parameter : parameters.GetRefParameterList()) {
        if (!parameter.Visible)
            continue;
        list.append(QJsonObject{{QStringLiteral("name"), parameter.Name},
                                {QStringLiteral("value"), parameter.CurrentValue},
                                {QStringLiteral("minimum"), parameter.MinValue},
                                {QStringLiteral("maximum"), parameter.MaxValue},
                                {QStringLiteral("good"), parameters.GetOneParamStatus(parameter)},
                                {QStringLiteral("warning"), warningText(parameters, parameter.Name)},
                                {QStringLiteral("changed"), parameters.isChangedFromDefault(parameter)}});
    }
    return list;
}

} // namespace

void writePeripherals(Design &design, QTextStream &out)
{
    forEachModule(design, [&out](const ModuleConfiguration &module) {
        if (module.GetIPValidFlag() || (module.GetIPStatusFlag() & IPSTATUS_ERROR))
            writeModule(module, out);
    });
}

QJsonValue peripheralsJson(Design &design)
{
    QJsonArray list;
    forEachModule(design, [&design, &list](const ModuleConfiguration &module) {
        QJsonArray modes;
        for (const std::unique_ptr<ModeControl> &control : module.controls())
            modes.append(modeJson(design, module, *control));
        list.append(QJsonObject{{QStringLiteral("instance"), module.instanceName()},
                                {QStringLiteral("inUse"), module.GetIPValidFlag()},
                                {QStringLiteral("error"), (module.GetIPStatusFlag() & IPSTATUS_ERROR) != 0},
                                {QStringLiteral("remarks"), QJsonArray::fromStringList(remarksOf(module))},
                                {QStringLiteral("modes"), modes},
                                {QStringLiteral("parameters"), parametersJson(module.parameters())}});
    });
    return list;
}

} // namespace ChipLoom
