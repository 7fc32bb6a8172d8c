#include "Design/DesignTexts.h"

#include "Design/DevicePinInfo.h"
#include "Design/ModuleConfiguration.h"

#include <QCoreApplication>

namespace ChipLoom {

namespace {

QString shown(const char *text)
{
    return QCoreApplication::translate("Design", text);
}

/// Puts arguments in the places of their numbers, all at once, so that one that holds "%1" stays as it is. A sentence
/// may leave some of them out, which `QString::arg` does not bear.
QString filled(const QString &text, const QStringList &arguments)
{
    QString result;
    for (int at = 0; at < text.size(); ++at) {
        const int number = text.at(at) == QLatin1Char('%') && at + 1 < text.size() ? text.at(at + 1).digitValue() : -1;
        if (number < 1 || number > arguments.size()) {
            result.append(text.at(at));
            continue;
        }
        result.append(arguments.at(number - 1));
        ++at;
    }
    return result;
}

/// The sentence of a reason, with %1 and on for its arguments.
const char *reasonText(DesignReason reason)
{
    switch (reason) {
    case DesignReason::None:
        break;
    case DesignReason::NoDesign:
        return QT_TRANSLATE_NOOP("Design", "No design is open.");
    case DesignReason::UnknownSetting:
        return QT_TRANSLATE_NOOP("Design", "There is no setting \"%1\" in this design.");
    case DesignReason::UnknownPin:
        return QT_TRANSLATE_NOOP("Design", "The package has no pin %1.");
    case DesignReason::FixedPin:
        return QT_TRANSLATE_NOOP("Design", "Pin %1 has a fixed purpose and cannot be assigned.");
    case DesignReason::InactiveVariant:
        return QT_TRANSLATE_NOOP("Design",
                                 "Another pad is connected to the position of %1; switch the pin remap first.");
    case DesignReason::SignalNotOnPin:
        return QT_TRANSLATE_NOOP("Design", "Pin %2 does not offer %1.");
    case DesignReason::UnknownSignal:
        return QT_TRANSLATE_NOOP("Design", "No pin of this package offers %1.");
    case DesignReason::NotPlaced:
        return QT_TRANSLATE_NOOP("Design", "%1 does not stand on pin %2.");
    case DesignReason::HeldBySignal:
        return QT_TRANSLATE_NOOP("Design", "Pin %1 is held by %2.");
    case DesignReason::VariantHeld:
        return QT_TRANSLATE_NOOP("Design", "The position of %1 is held by %3 through the pad %2.");
    case DesignReason::CrystalPinsParted:
        return QT_TRANSLATE_NOOP("Design",
                                 "%1 and %2 serve the crystal or their ports only together, and %3 stands on %2.");
    case DesignReason::NoGroupOnPin:
        return QT_TRANSLATE_NOOP("Design", "No remap group offers %1 on pin %2; take it off its present pin first.");
    case DesignReason::NoGroupFits:
        return QT_TRANSLATE_NOOP("Design", "No remap group of %1 has room for all of its signals.");
    case DesignReason::OccupiedByRemap:
        return QT_TRANSLATE_NOOP("Design", "The remap in use brings %2 to pin %1, so nothing else may drive it.");
    case DesignReason::OutputKindDiffers:
        return QT_TRANSLATE_NOOP("Design", "%2 drives pin %1 with another kind of output.");
    case DesignReason::TimerOutputOnGroupPin:
        return QT_TRANSLATE_NOOP("Design", "Pin %1 is driven by %2, which the remap group does not allow.");
    case DesignReason::BoundSignalBlocked:
        return QT_TRANSLATE_NOOP("Design", "%1 needs %2 at position %3, which is not free for it.");
    case DesignReason::NothingToLabel:
        return QT_TRANSLATE_NOOP("Design", "Nothing stands on pin %1 that could be labelled.");
    case DesignReason::InvalidLabel:
        return QT_TRANSLATE_NOOP("Design",
                                 "\"%1\" is no label: letters, digits and underscores, not beginning with a digit.");
    case DesignReason::Cancelled:
        return QT_TRANSLATE_NOOP("Design", "Nothing was changed.");
    case DesignReason::UnknownMode:
        return QT_TRANSLATE_NOOP("Design", "%1 has no mode \"%2\" on this device.");
    case DesignReason::UnknownItem:
        return QT_TRANSLATE_NOOP("Design", "The mode \"%2\" of %1 has no choice \"%3\" on this device.");
    case DesignReason::ModeClosed:
        return QT_TRANSLATE_NOOP("Design", "The mode \"%2\" of %1 is closed by the settings of another peripheral.");
    case DesignReason::SignalsNotOnPackage:
        return QT_TRANSLATE_NOOP(
            "Design", "The following signals are not found in all pins, you can switch pin remapping in SCFG: %1");
    case DesignReason::ItemConditionNotMet:
        return QT_TRANSLATE_NOOP("Design", "%1 is closed by the settings of another peripheral (condition: %2).");
    case DesignReason::PinsTaken:
        return QT_TRANSLATE_NOOP("Design", "%1 finds no free pin for %2.");
    case DesignReason::UnknownParameter:
        return QT_TRANSLATE_NOOP("Design", "%1 shows no parameter %2 in its present modes.");
    case DesignReason::ParameterClosed:
        return QT_TRANSLATE_NOOP("Design", "%1 is fixed by the present modes.");
    case DesignReason::NotANumber:
        return QT_TRANSLATE_NOOP("Design", "\"%2\" is no value for %1.");
    case DesignReason::NotAnAddress:
        return QT_TRANSLATE_NOOP("Design", "\"%2\" is no address for %1.");
    case DesignReason::BelowMinimum:
        return QT_TRANSLATE_NOOP("Design", "%2 is too small for %1: at least %3.");
    case DesignReason::AboveMaximum:
        return QT_TRANSLATE_NOOP("Design", "%2 is too large for %1: at most %3.");
    case DesignReason::ValueNotInList:
        return QT_TRANSLATE_NOOP("Design", "%1 has no value \"%2\".");
    case DesignReason::ValueNotOffered:
        return QT_TRANSLATE_NOOP("Design", "The present settings do not allow the value \"%2\" of %1.");
    case DesignReason::ValueMarked:
        return QT_TRANSLATE_NOOP("Design", "The value \"%2\" of %1 contradicts other settings.");
    case DesignReason::ModeIncomplete:
        return QT_TRANSLATE_NOOP("Design", "%1 is incomplete: choose an entry of the mode \"%2\" too.");
    case DesignReason::SysTickShared:
        return QT_TRANSLATE_NOOP("Design", "%1 counts its ticks with SysTick, which is the delay time base too; choose "
                                           "another delay time base in %2.");
    case DesignReason::TwoKernels:
        return QT_TRANSLATE_NOOP("Design", "%1 and %2 cannot run together; switch one of them off.");
    case DesignReason::EdgeOnAnalogPin:
        return QT_TRANSLATE_NOOP("Design", "%1 sees no edges: %3 makes %2 an analog pin.");
    case DesignReason::RateOff:
        return QT_TRANSLATE_NOOP("Design", "%1 is off by %2 %; up to %3 % is fine.");
    case DesignReason::SamplingTimeShared:
        return QT_TRANSLATE_NOOP("Design", "%1 has no effect: a channel has one sampling time, here that of %2.");
    case DesignReason::ChannelAtOnce:
        return QT_TRANSLATE_NOOP("Design", "%2 samples the same pin at the same moment, and each disturbs the other.");
    case DesignReason::EventsUnheard:
        return QT_TRANSLATE_NOOP("Design", "Events of %1 interrupt, but its vectors are off: %2.");
    case DesignReason::VectorLineClosed:
        return QT_TRANSLATE_NOOP("Design", "%1 is raised by line %2 of EXINT only, which does not interrupt now.");
    case DesignReason::ValueDoubtful:
        return QT_TRANSLATE_NOOP("Design", "%2.");
    case DesignReason::NoBitTiming:
        return QT_TRANSLATE_NOOP("Design", "No bit timing gives %2 kbit/s closely enough; the nearest is %3.");
    case DesignReason::NoI2cTiming:
        return QT_TRANSLATE_NOOP("Design", "No timing keeps the limit %2 of the bus; nearest bus clock: %3.");
    case DesignReason::ClockRefused:
        return "%1";
    case DesignReason::NoSettingsOnPin:
        return QT_TRANSLATE_NOOP("Design", "Nothing that has an effect stands on pin %1, so it has no settings.");
    case DesignReason::UnknownVector:
        return QT_TRANSLATE_NOOP("Design", "The device has no interrupt %1.");
    case DesignReason::VectorClosed:
        return QT_TRANSLATE_NOOP("Design", "%1 is closed: nothing that raises it is in use.");
    case DesignReason::VectorHeldOn:
        return QT_TRANSLATE_NOOP("Design", "%1 is needed by a middleware and stays on.");
    case DesignReason::VectorFieldFixed:
        return QT_TRANSLATE_NOOP("Design", "%2 of %1 cannot be changed.");
    case DesignReason::PriorityGroupFixed:
        return QT_TRANSLATE_NOOP("Design", "The RTOS fixes the priority group.");
    case DesignReason::NoDmaChannel:
        return QT_TRANSLATE_NOOP("Design", "No available DMA channels for configurated peripherals!");
    case DesignReason::NoDmaRequest:
        return QT_TRANSLATE_NOOP("Design", "No available DMA requests for configurated peripherals!");
    case DesignReason::UnknownDmaRequest:
        return QT_TRANSLATE_NOOP("Design", "No available DMA request!");
    case DesignReason::UnknownDmaChannel:
        return QT_TRANSLATE_NOOP("Design", "There is no DMA channel \"%1\".");
    case DesignReason::DmaRequestClosed:
        return QT_TRANSLATE_NOOP("Design", "The present settings of %2 do not raise the DMA request %1.");
    case DesignReason::DmaRequestUsed:
        return QT_TRANSLATE_NOOP("Design", "%1 has the channel %2 already.");
    case DesignReason::DmaRequestNotUsed:
        return QT_TRANSLATE_NOOP("Design", "%1 is not in use, so there is nothing to set; give the request a channel.");
    case DesignReason::DmaChannelTaken:
        return QT_TRANSLATE_NOOP("Design", "%1 serves %2.");
    case DesignReason::DmaChannelNotForRequest:
        return QT_TRANSLATE_NOOP("Design", "%2 does not serve %1 with the present settings.");
    case DesignReason::NoChannelForDmaRequest:
        return QT_TRANSLATE_NOOP("Design", "No available channel for configurated DMA Request! %1 has been used");
    case DesignReason::InvalidText:
        return QT_TRANSLATE_NOOP("Design", "\"%2\" cannot be used for %1.");
    case DesignReason::NotUsedByModes:
        return QT_TRANSLATE_NOOP("Design", "%1 is placed by hand, but no mode uses it.");
    case DesignReason::DmaRequestElsewhere:
        return QT_TRANSLATE_NOOP("Design", "%1 belongs to %2; its settings begin with \"%3/\".");
    case DesignReason::NoSuchModule:
        return QT_TRANSLATE_NOOP("Design", "The device has no %1; its settings stay in the file.");
    case DesignReason::DuplicateEntry:
        return QT_TRANSLATE_NOOP("Design", "%1 stands in the file more than once; the first counts.");
    }
    return "";
}

} // namespace

QString answerText(const DesignAnswer &answer)
{
    if (answer)
        return {};
    return filled(shown(reasonText(answer.reason)), answer.arguments);
}

QString ownText(const QString &english, const QString &chinese, const QString &key)
{
    const QString &text = GlobalLanguage::g_CurrentLanguage == UI_CH ? chinese : english;
    return text.isEmpty() ? key : text;
}

QString noteText(const ModuleConfiguration &module)
{
    const ModeNote &note = module.note();
    switch (note.kind) {
    case ModeNote::Kind::Reason:
        return answerText(note.reason);
    case ModeNote::Kind::None:
        return {};
    case ModeNote::Kind::Fixed:
        return QCoreApplication::translate("Modes", note.argument.toUtf8().constData());
    case ModeNote::Kind::SelectBox:
        break;
    }
    const ModeControl *box = module.control(note.argument);
    const QString label = box ? choiceText(*box, 0) : note.argument;
    return shown(QT_TRANSLATE_NOOP("Design", "Please select a ")) + label;
}

QString choiceText(const ModeControl &control, int index)
{
    const ModeCofiguration &mode = control.declaration();
    const QString name = ownText(mode.modeUserName_EN, mode.modeUserName_CH, mode.modeName);
    if (control.isCheckBox() || index < 1)
        return name;
    const ItemInfoStruct &item = control.items().at(size_t(index) - 1);
    return shown(QT_TRANSLATE_NOOP("Design", "%1 (%2)"))
        .arg(name, ownText(item.UserName_EN, item.UserName_CH, item.Name));
}

QString statusText(PINCONFIG_TYPE status, const QString &signal)
{
    switch (status) {
    case Not_Config:
        return shown(QT_TRANSLATE_NOOP("Design", "not in use"));
    case Manual_Config:
        return shown(QT_TRANSLATE_NOOP("Design", "placed by hand, no mode uses it"));
    case IP_Config:
        return shown(QT_TRANSLATE_NOOP("Design", "placed by a mode"));
    case Manual_IP_Config:
        break;
    }
    return isPlainFunction(signal) ? shown(QT_TRANSLATE_NOOP("Design", "placed by hand"))
                                   : shown(QT_TRANSLATE_NOOP("Design", "placed by hand, used by a mode"));
}

QString menuEntryHint(const PinMenuEntry &entry)
{
    if (!entry.refusal)
        return answerText(entry.refusal);
    QStringList hints;
    if (!entry.comesFrom.isEmpty())
        hints.append(shown(QT_TRANSLATE_NOOP("Design", "Moves here from pin %1.")).arg(entry.comesFrom));
    if (!entry.conflict) {
        hints.append(shown(QT_TRANSLATE_NOOP("Design", "Takes %1 off this position."))
                         .arg(entry.conflict.arguments.value(entry.conflict.arguments.size() - 1)));
    }
    return hints.join(QLatin1Char(' '));
}

QString menuGroupText(const PinMenuGroup &group)
{
    return group.peripheral.isEmpty() ? shown(QT_TRANSLATE_NOOP("Design", "Plain functions")) : group.peripheral;
}

} // namespace ChipLoom
