#include "Design/Explanations.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/ModuleConfiguration.h"
#include "Design/Routing.h"

#include <QCoreApplication>

#include <algorithm>

namespace ChipLoom {

namespace {

const QString Separator = QStringLiteral(", ");

QString shown(const char *text)
{
    return QCoreApplication::translate("Design", text);
}

bool isListed(const Design &design, const QString &instance)
{
    for (const QList<PeripheralsBaseInfo> *list : {&design.peripherals(), &design.middlewares()}) {
        for (const PeripheralsBaseInfo &entry : *list) {
            if (entry.InstanceName == instance)
                return true;
        }
    }
    return false;
}

// The words of refusals are instances, signals, pins, entries and expressions; only the first two lead somewhere.
void addModules(const Design &design, const QString &word, const QString &self, QStringList &modules)
{
    for (const QString &instance : isListed(design, word) ? QStringList{word} : design.holdersOf(word)) {
        if (instance != self && !modules.contains(instance) && isListed(design, instance))
            modules.append(instance);
    }
}

// Pins that could take a signal, with what keeps it off them.
QStringList occupiedPlaces(const Design &design, const ModeSignal &signal, const QString &self, QStringList &modules)
{
    const DevicePinInfo &pins = design.pinInfo();
    const PinRules rules = design.pins().rules();
    QStringList lines;
    for (const SignalPlace place : pins.placesOf(signal.signalName)) {
        if (!pins.pin(place.pin).validFlag)
            continue;
        const DesignAnswer room =
            rules.SignalCanbeUseInPinAccordingIOMode(signal.signalName, signal.signalIOMode, place.pin);
        if (room)
            continue;
        // It names the pin and then what stands there.
        const QStringList standing = room.arguments.last().split(QLatin1Char(';'));
        lines.append(signal.signalName + QLatin1String("------") + room.arguments.at(room.arguments.size() - 2) +
                     QLatin1Char('\n') + standing.join(Separator));
        for (const QString &holder : standing)
            addModules(design, holder, self, modules);
    }
    return lines;
}

// Why the remap groups that offer a signal have no room for the entry.
QStringList refusedGroups(const Design &design, const ItemInfoStruct &item, const ModeSignal &signal,
                          const QString &self, QStringList &modules)
{
    const DevicePinInfo &pins = design.pinInfo();
    const PinRules rules = design.pins().rules();
    QStringList lines;
    for (const GroupPlace &place : pins.groupsOf(signal.signalName)) {
        const Explanation refusal =
            explained(design, rules.SignalsCanbeUseInGroup(item.SignalsList, place.group), self);
        if (!refusal.text.isEmpty() && !lines.contains(refusal.text))
            lines.append(refusal.text);
        for (const QString &holder : refusal.modules)
            addModules(design, holder, self, modules);
    }
    return lines;
}

Explanation pinsTaken(const Design &design, const ModuleConfiguration &module, const ItemInfoStruct &item,
                      const DesignAnswer &answer)
{
    const QStringList unplaced = answer.arguments.value(1).split(Separator);
    QStringList modules;
    QStringList lines;
    for (const ModeSignal &signal : item.SignalsList) {
        if (!unplaced.contains(signal.signalName))
            continue;
        QStringList reasons = occupiedPlaces(design, signal, module.instanceName(), modules);
        if (reasons.isEmpty())
            reasons = refusedGroups(design, item, signal, module.instanceName(), modules);
        lines += reasons;
    }
    lines.removeDuplicates();
    if (lines.isEmpty())
        return {answerText(answer), modules};
    lines.prepend(shown(QT_TRANSLATE_NOOP("Design", "Conflict with:")));
    return {lines.join(QLatin1Char('\n')), modules};
}

// Other modules that can change that a condition fails: for a token that is there who raises it, for one that is
// missing who could.
QStringList changers(const Design &design, const ModuleConfiguration &module, const QStringList &words,
                     const QStringList &received)
{
    QStringList modules;
    for (const std::unique_ptr<DesignPart> &part : design.parts()) {
        const auto *other = dynamic_cast<const ModuleConfiguration *>(part.get());
        if (!other || other == &module ||
            tokenRoute(design.series(), other->instanceName(), module.instanceName()) == Route::None)
            continue;
        const bool concerned = std::any_of(words.begin(), words.end(), [&](const QString &word) {
            return received.contains(word) ? other->raises(word) : other->canRaise(word);
        });
        if (concerned)
            modules.append(other->instanceName());
    }
    return modules;
}

bool hasToken(const ItemInfoStruct &item, const QStringList &words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](const QString &word) { return item.SemaphoreList.contains(word); });
}

// Modes and parameters of the module itself that can change it, by their labels. A mode need not be told that it hangs
// on itself.
QStringList ownPlaces(const ModuleConfiguration &module, const ModeControl *self, const QStringList &words,
                      const QStringList &parameterNames)
{
    QStringList labels;
    for (const std::unique_ptr<ModeControl> &control : module.controls()) {
        const std::vector<ItemInfoStruct> &items = control->items();
        const ModeCofiguration &mode = control->declaration();
        if (control.get() != self &&
            std::any_of(items.begin(), items.end(), [&](const ItemInfoStruct &item) { return hasToken(item, words); }))
            labels.append(ownText(mode.modeUserName_EN, mode.modeUserName_CH, mode.modeName));
    }
    for (const RefParameter &parameter : module.parameters().GetRefParameterList()) {
        const QList<PossibleValue> &values = parameter.PossibleValueList;
        const bool concerned = parameterNames.contains(parameter.Name) ||
                               std::any_of(values.begin(), values.end(),
                                           [&](const PossibleValue &value) { return words.contains(value.Semaphore); });
        if (parameter.Visible && concerned)
            labels.append(parameter.Comment.isEmpty() ? parameter.Name : parameter.Comment);
    }
    labels.removeDuplicates();
    return labels;
}

Explanation withPlaces(const QString &text, const QStringList &own, const QStringList &modules)
{
    const QStringList places = own + modules;
    if (places.isEmpty())
        return {text, {}};
    return {text + QLatin1Char('\n') +
                shown(QT_TRANSLATE_NOOP("Design", "To be changed in: %1")).arg(places.join(Separator)),
            modules};
}

} // namespace

Explanation explained(const Design &design, const DesignAnswer &answer, const QString &self)
{
    Explanation explanation{answerText(answer), {}};
    for (const QString &argument : answer.arguments) {
        for (const QString &word : argument.split(Separator))
            addModules(design, word, self, explanation.modules);
    }
    return explanation;
}

QList<Explanation> explained(const Design &design, const QList<LostChoice> &lost)
{
    QList<Explanation> lines;
    for (auto choice = lost.begin(); choice != lost.end();) {
        const QString instance = choice->instanceName;
        const ModuleConfiguration *module = design.module(instance);
        QStringList names;
        for (; choice != lost.end() && choice->instanceName == instance; ++choice)
            names.append(choiceText(*module->control(choice->modeName), choice->formerIndex));
        lines.append(
            {shown(QT_TRANSLATE_NOOP("Design", "%1 lost a pin. Off now: %2")).arg(instance, names.join(Separator)),
             {instance}});
    }
    return lines;
}

Explanation itemExplanation(const Design &design, const ModuleConfiguration &module, const ModeControl &control,
                            int index)
{
    const DesignAnswer answer = module.itemAnswer(control, index);
    if (answer)
        return {};
    const ItemInfoStruct &item = control.items().at(index - 1);
    if (answer.reason == DesignReason::PinsTaken)
        return pinsTaken(design, module, item, answer);
    if (answer.reason == DesignReason::SignalsNotOnPackage)
        return {answerText(answer), {}};

    const bool closed = answer.reason == DesignReason::ModeClosed;
    const Condition &failed = closed ? control.declaration().modeCondition : item.ItemCondition;
    const QStringList words = (closed ? control.condition() : item.condition).unmetWords(control.receivedTokens());
    return withPlaces(ownText(failed.Diagnostic_EN, failed.Diagnostic_CH, answerText(answer)),
                      ownPlaces(module, &control, words, {}),
                      changers(design, module, words, control.receivedTokens()));
}

Explanation valueExplanation(const Design &design, const ModuleConfiguration &module, const RefParameter &parameter,
                             const PossibleValue &value)
{
    const IP_ParamSettingConfiguration &parameters = module.parameters();
    if (parameters.isOffered(value))
        return {};
    const Condition &failed = value.ValueCondition;
    const ParameterCondition::Unmet unmet = parameters.unmetTerms(failed.Expression);
    const DesignAnswer answer{DesignReason::ValueNotOffered, {parameter.Name, value.Value}};
    return withPlaces(ownText(failed.Diagnostic_EN, failed.Diagnostic_CH, answerText(answer)),
                      ownPlaces(module, nullptr, unmet.words, unmet.parameters),
                      changers(design, module, unmet.words, parameters.GetValidSemaphoreList()));
}

} // namespace ChipLoom
