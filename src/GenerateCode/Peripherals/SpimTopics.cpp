#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

const PeripheralTopics &spimTopics()
{
    static const QStringList pins{"SCK", "CS", "IO0", "IO1", "IO2", "IO3"};
    static const PeripheralTopics topics{
        .kind = "SPIM",
        .function =
            {
                onlyPinDeclaration(pins),
                pinDefaults(pins),
                pin("sck", "SCK"),
                pin("cs", "CS"),
                pin("io0", "IO0"),
                pin("io1", "IO1"),
                pin("io2", "IO2"),
                pin("io3", "IO3"),
                remap(pins),
                call("GenerateCode_SPIM_model", "spim_model_select", {"FlashType"}),
                call("GenerateCode_SPIM_encryption", "spim_encryption_range_set", {"EncryptionRange"}),
            },
    };
    return topics;
}

} // namespace ChipLoom
