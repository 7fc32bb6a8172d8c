#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

namespace {

std::vector<Topic> sdioFunction()
{
    const QStringList pins{"CK", "CMD", "D0", "D1", "D2", "D3", "D4", "D5", "D6", "D7"};
    std::vector<Topic> topics{onlyPinDeclaration(pins), pinDefaults(pins)};
    for (const QString &name : pins)
        topics.push_back(pin(name.toLower(), name));
    topics.push_back(remap(pins));
    const std::vector<Topic> rest{
        // the divider is not there where it is passed by
        call("GenerateCode_SDIO_clock", "sdio_clock_config", {Keep, orSample("Clock_division"), "Clock_edge"}),
        line("GenerateCode_SDIO_clock", "sdio_clock_bypass", isTrue("Clock_divider_bypass"),
             {Keep, "Clock_divider_bypass"}),
        line("GenerateCode_SDIO_clock", "sdio_power_saving_mode_enable", isTrue("Clock_power_save"),
             {Keep, "Clock_power_save"}),
        line("GenerateCode_SDIO_clock", "sdio_flow_control_enable", isTrue("Hardware_flow_control"),
             {Keep, "Hardware_flow_control"}),
        call("GenerateCode_SDIO_width", "sdio_bus_width_config", {Keep, "BusWidth"}),
        section("GenerateCode_SDIO_DMA", "dma", isRequested({""})),
        interruptEnable("Interrupt_CMDCMPL"),
        interruptEnable("Interrupt_DTCMPL"),
        interruptEnable("Interrupt_ERR"),
        interruptRemarks(),
    };
    append(topics, rest);
    return topics;
}

} // namespace

const PeripheralTopics &sdioTopics()
{
    static const PeripheralTopics topics{
        .kind = "SDIO",
        .function = sdioFunction(),
        .branches = {{"_CMDCMPL_FLAG", isTrue("Interrupt_CMDCMPL")},
                     {"_DTCMPL_FLAG", isTrue("Interrupt_DTCMPL")},
                     {"_ERR_FLAG", isTrue("Interrupt_ERR")}},
    };
    return topics;
}

} // namespace ChipLoom
