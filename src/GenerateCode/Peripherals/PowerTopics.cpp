#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

namespace {

// The pins that can wake any of the chips.
constexpr int LastWakeUpPin = 7;

std::vector<Topic> powerFunction(const QStringList &pins)
{
    std::vector<Topic> topics{onlyPinDeclaration(pins), pinDefaults(pins)};
    for (int number = 1; number <= LastWakeUpPin; ++number) {
        const QString text = QString::number(number);
        const QString present = QLatin1String("wkup:") + text;
        topics.push_back(pin("wkup" + text, "WKUP" + text).onlyWhen(present));
        topics.push_back(section("GenerateCode_PWC_wakeup_pin", "WakeUpPin_" + text,
                                 isTrue(QStringList{QLatin1String("WakeUpPin_") + text}))
                             .onlyWhen(present));
    }
    topics.push_back(section("GenerateCode_PWC_pvm", "power voltage monitor", isGiven("PVMSelect"),
                             {call("GenerateCode_PWC_pvm", "pwc_pvm_level_select", {"PVMSelect"})}));
    topics.push_back(interruptRemarks());
    return topics;
}

QStringList wakeUpPins()
{
    QStringList pins;
    for (int number = 1; number <= LastWakeUpPin; ++number)
        pins.append(QLatin1String("WKUP") + QString::number(number));
    return pins;
}

} // namespace

const PeripheralTopics &pwcTopics()
{
    static const PeripheralTopics topics{
        .kind = "PWC",
        .function = powerFunction(wakeUpPins()),
        .globalSignals = wakeUpPins(),
    };
    return topics;
}

} // namespace ChipLoom
