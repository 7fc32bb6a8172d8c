#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

const PeripheralTopics &accTopics()
{
    static const PeripheralTopics topics{
        .kind = "ACC",
        .function =
            {
                call("GenerateCode_ACC_step", "acc_step_set", {"StepTrim"}),
                call("GenerateCode_ACC_bounds", "acc_c1_set", {"C1"}),
                call("GenerateCode_ACC_bounds", "acc_c2_set", {"C2"}),
                call("GenerateCode_ACC_bounds", "acc_c3_set", {"C3"}),
                interruptEnable("Interrupt_CALRDY"),
                interruptEnable("Interrupt_EIEN"),
                interruptRemarks(),
                call("GenerateCode_ACC_mode", "acc_calibration_mode_enable", {"CalibrationMode", Keep}),
            },
        .branches = {{"_CALRDY_FLAG", isTrue("Interrupt_CALRDY")}, {"_EIEN_FLAG", isTrue("Interrupt_EIEN")}},
    };
    return topics;
}

} // namespace ChipLoom
