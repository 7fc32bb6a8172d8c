#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

const PeripheralTopics &wdtTopics()
{
    static const PeripheralTopics topics{
        .kind = "WDT",
        .function =
            {
                call("GenerateCode_WDT_divider", "wdt_divider_set", {"Prescaler"}),
                call("GenerateCode_WDT_reload_value", "wdt_reload_value_set", {"Counter"}),
                section("GenerateCode_WDT_window", "window", isTrue("WindowEnable"),
                        {call("GenerateCode_WDT_window", "wdt_window_counter_set", {"Window"})})
                    .onlyWhen("window"),
            },
    };
    return topics;
}

const PeripheralTopics &wwdtTopics()
{
    static const PeripheralTopics topics{
        .kind = "WWDT",
        .function =
            {
                call("GenerateCode_WWDT_divider", "wwdt_divider_set", {"Prescaler"}),
                call("GenerateCode_WWDT_window", "wwdt_window_counter_set", {"Window"}),
                interruptEnable("Interrupt_RLDF"),
                interruptRemarks(),
                call("GenerateCode_WWDT_enable", "wwdt_enable", {"Counter"}),
            },
        .branches = {{"_RLDF_FLAG", isTrue("Interrupt_RLDF")}},
    };
    return topics;
}

} // namespace ChipLoom
