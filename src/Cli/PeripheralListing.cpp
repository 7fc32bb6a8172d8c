#include "Cli/PeripheralListing.h"

#include "Cli/TextTable.h"
#include "Design/DesignTexts.h"
#include "Design/IP_ModeAndConfiguration.h"

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

template <typename Use> void forEachPeripheral(Design &design, const Use &use)
{
    for (const std::unique_ptr<DesignPart> &part : design.parts()) {
        if (const IP_ModeAndConfiguration *peripheral = design.peripheral(part->instanceName()))
            use(*peripheral);
    }
}

void writePeripheral(const IP_ModeAndConfiguration &peripheral, QTextStream &out)
{
    out << "  " << peripheral.instanceName();
    if (peripheral.GetIPStatusFlag() & IPSTATUS_ERROR)
        out << "  (" << shown(QT_TRANSLATE_NOOP("Cli", "has errors")) << ')';
    out << '\n';
    QList<QStringList> lines;
    for (const std::unique_ptr<ModeControl> &control : peripheral.controls()) {
        if (control->isOn())
            lines.append({QLatin1String("mode/") + peripheral.instanceName() + QLatin1Char('/') + control->modeName(),
                          control->isCheckBox() ? QStringLiteral("TRUE") : control->currentName(),
                          {},
                          {}});
    }
    for (const RefParameter &parameter : peripheral.parameters().GetRefParameterList()) {
        if (!parameter.Visible)
            continue;
        const bool good = peripheral.parameters().GetOneParamStatus(parameter);
        lines.append({QLatin1String("param/") + peripheral.instanceName() + QLatin1Char('/') + parameter.Name,
                      parameter.CurrentValue, rangeOf(parameter),
                      good ? QString() : shown(QT_TRANSLATE_NOOP("Cli", "not allowed"))});
    }
    if (!lines.isEmpty())
        writeTable(out, lines, 4);
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

QJsonObject modeJson(const IP_ModeAndConfiguration &peripheral, const ModeControl &control)
{
    QJsonArray items;
    for (int index = 1; index < control.count(); ++index) {
        const ItemInfoStruct &item = control.items().at(index - 1);
        items.append(QJsonObject{{QStringLiteral("name"), item.Name},
                                 {QStringLiteral("state"), stateWord(item.state())},
                                 {QStringLiteral("reason"), answerText(peripheral.itemAnswer(control, index))}});
    }
    return {{QStringLiteral("name"), control.modeName()},
            {QStringLiteral("chosen"), control.currentName()},
            {QStringLiteral("open"), control.isEnabled()},
            {QStringLiteral("items"), items}};
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
                                {QStringLiteral("changed"), parameters.isChangedFromDefault(parameter)}});
    }
    return list;
}

} // namespace

void writePeripherals(Design &design, QTextStream &out)
{
    forEachPeripheral(design, [&out](const IP_ModeAndConfiguration &peripheral) {
        if (peripheral.GetIPValidFlag() || (peripheral.GetIPStatusFlag() & IPSTATUS_ERROR))
            writePeripheral(peripheral, out);
    });
}

QJsonValue peripheralsJson(Design &design)
{
    QJsonArray list;
    forEachPeripheral(design, [&list](const IP_ModeAndConfiguration &peripheral) {
        QJsonArray modes;
        for (const std::unique_ptr<ModeControl> &control : peripheral.controls())
            modes.append(modeJson(peripheral, *control));
        list.append(QJsonObject{{QStringLiteral("instance"), peripheral.instanceName()},
                                {QStringLiteral("inUse"), peripheral.GetIPValidFlag()},
                                {QStringLiteral("error"), (peripheral.GetIPStatusFlag() & IPSTATUS_ERROR) != 0},
                                {QStringLiteral("modes"), modes},
                                {QStringLiteral("parameters"), parametersJson(peripheral.parameters())}});
    });
    return list;
}

} // namespace ChipLoom
