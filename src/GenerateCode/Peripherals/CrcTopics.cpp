#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

const PeripheralTopics &crcTopics()
{
    static const PeripheralTopics topics{
        .kind = "CRC",
        .function =
            {
                call("GenerateCode_CRC_poly_size", "crc_poly_size_set", {"CRCPolySize"}).onlyWhen("poly"),
                call("GenerateCode_CRC_poly_value", "crc_poly_value_set", {"CRCPolyValue"}).onlyWhen("poly"),
                call("GenerateCode_CRC_init_data", "crc_init_data_set", {"CRCInitValue"}),
                call("GenerateCode_CRC_reverse_input", "crc_reverse_input_data_set", {"ReverseInput"}),
                call("GenerateCode_CRC_reverse_output", "crc_reverse_output_data_set", {"ReverseOutput"}),
            },
    };
    return topics;
}

} // namespace ChipLoom
