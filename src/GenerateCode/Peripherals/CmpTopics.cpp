#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

const PeripheralTopics &cmpTopics()
{
    static const QStringList pins{"INP0", "INP1", "INM0", "INM1", "INM2", "OUT"};
    static const PeripheralTopics topics{
        .kind = "CMP",
        .function =
            {
                pinDeclaration(pins),
                pinDefaults(pins),
                pin("inp0", "INP0"),
                pin("inp1", "INP1"),
                pin("inm0", "INM0"),
                pin("inm1", "INM1"),
                pin("inm2", "INM2"),
                pin("out", "OUT"),
                assignment("GenerateCode_CMP_speed", "cmp_init_struct.cmp_speed", "Speed"),
                assignment("GenerateCode_CMP_inputs", "cmp_init_struct.cmp_non_inverting", "NonInverting"),
                assignment("GenerateCode_CMP_inputs", "cmp_init_struct.cmp_inverting", "Inverting"),
                assignment("GenerateCode_CMP_output", "cmp_init_struct.cmp_output", "Target"),
                assignment("GenerateCode_CMP_output", "cmp_init_struct.cmp_polarity", "Polarity"),
                assignment("GenerateCode_CMP_hysteresis", "cmp_init_struct.cmp_hysteresis", "Hysteresis"),
                assignment("GenerateCode_CMP_filter", "cmp_init_struct.cmp_filter", "Filter"),
                interruptRemarks(),
            },
    };
    return topics;
}

} // namespace ChipLoom
