#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

const PeripheralTopics &canTopics()
{
    static const QStringList pins{"RX", "TX"};
    static const TopicTest errors = isTrue("Interrupt_EOIEN");
    static const PeripheralTopics topics{
        .kind = "CAN",
        .function =
            {
                pinDeclaration(pins),
                section("GenerateCode_CAN_filter", "filter declaration", isTrue("FilterEnable")),
                pinDefaults(pins),
                pin("rx", "RX"),
                pin("tx", "TX"),
                remap(pins),
                crystalPins(),
                assignment("GenerateCode_CAN_base", "can_base_struct.mode", "OperatingMode"),
                assignment("GenerateCode_CAN_base", "can_base_struct.time_triggered", "TimeTriggered"),
                assignment("GenerateCode_CAN_base", "can_base_struct.auto_bus_on", "AutoBusOff"),
                assignment("GenerateCode_CAN_base", "can_base_struct.auto_wake_up", "AutoWakeUp"),
                assignment("GenerateCode_CAN_base", "can_base_struct.send_once", "ProhibitRetransmission"),
                assignment("GenerateCode_CAN_base", "can_base_struct.discarding_rule", "DiscardRule"),
                assignment("GenerateCode_CAN_base", "can_base_struct.sending_rule", "SendingSequence"),
                assignment("GenerateCode_CAN_baudrate", "can_baudrate_struct.division", "Baudrate_Division"),
                assignment("GenerateCode_CAN_baudrate", "can_baudrate_struct.rsaw_size", "RSAW_Size"),
                assignment("GenerateCode_CAN_baudrate", "can_baudrate_struct.bs1_size", "BS1_Size"),
                assignment("GenerateCode_CAN_baudrate", "can_baudrate_struct.bs2_size", "BS2_Size"),
                section("GenerateCode_CAN_filter", "filter", isTrue("FilterEnable"),
                        {assignment("GenerateCode_CAN_filter", "can_filter_init_struct.filter_number", "FilterNumber"),
                         assignment("GenerateCode_CAN_filter", "can_filter_init_struct.filter_mode", "FilterMode"),
                         assignment("GenerateCode_CAN_filter", "can_filter_init_struct.filter_width", "FilterBits"),
                         assignment("GenerateCode_CAN_filter", "can_filter_init_struct.filter_fifo", "FilterFIFO"),
                         assignment("GenerateCode_CAN_filter", "can_filter_init_struct.filter_id1", "FilterId1"),
                         assignment("GenerateCode_CAN_filter", "can_filter_init_struct.filter_id2", "FilterId2")}),
                interruptEnable("Interrupt_TCIEN"),
                interruptEnable("Interrupt_RF0MIEN"),
                interruptEnable("Interrupt_RF0FIEN"),
                interruptEnable("Interrupt_RF0OIEN"),
                interruptEnable("Interrupt_RF1MIEN"),
                interruptEnable("Interrupt_RF1FIEN"),
                interruptEnable("Interrupt_RF1OIEN"),
                interruptEnable("Interrupt_EAIEN"),
                interruptEnable("Interrupt_EPIEN"),
                interruptEnable("Interrupt_BOIEN"),
                interruptEnable("Interrupt_ETRIEN"),
                interruptEnable("Interrupt_EOIEN"),
                interruptEnable("Interrupt_QDZIEN"),
                interruptEnable("Interrupt_EDZIEN"),
                interruptRemarks(),
            },
        .branches = {{"_TC_FLAG", isTrue("Interrupt_TCIEN")},
                     {"_RF0M_FLAG", isTrue("Interrupt_RF0MIEN")},
                     {"_RF0F_FLAG", isTrue("Interrupt_RF0FIEN")},
                     {"_RF0O_FLAG", isTrue("Interrupt_RF0OIEN")},
                     {"_RF1M_FLAG", isTrue("Interrupt_RF1MIEN")},
                     {"_RF1F_FLAG", isTrue("Interrupt_RF1FIEN")},
                     {"_RF1O_FLAG", isTrue("Interrupt_RF1OIEN")},
                     {"_EA_FLAG", both(errors, isTrue("Interrupt_EAIEN"))},
                     {"_EP_FLAG", both(errors, isTrue("Interrupt_EPIEN"))},
                     {"_BO_FLAG", both(errors, isTrue("Interrupt_BOIEN"))},
                     {"_ETR_FLAG", both(errors, isTrue("Interrupt_ETRIEN"))},
                     {"_QDZ_FLAG", isTrue("Interrupt_QDZIEN")},
                     {"_EDZ_FLAG", isTrue("Interrupt_EDZIEN")}},
    };
    return topics;
}

} // namespace ChipLoom
