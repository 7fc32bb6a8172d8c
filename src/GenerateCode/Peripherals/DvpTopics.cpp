#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

namespace {

constexpr int DataLines = 14;

QStringList dvpSignals()
{
    QStringList signalNames{"PIXCLK", "HSYNC", "VSYNC"};
    for (int n = 0; n < DataLines; ++n)
        signalNames.append(QLatin1String("D") + QString::number(n));
    return signalNames;
}

Topic factors(const char *name, const char *function, const QString &stem)
{
    return section("GenerateCode_DVP_scaling", QLatin1String(name), isTrue(QStringList{stem}),
                   {call("GenerateCode_DVP_scaling", function,
                         {TopicValue(stem + QLatin1String("_Source_Factor")),
                          TopicValue(stem + QLatin1String("_Target_Factor"))})});
}

std::vector<Topic> dvpFunction()
{
    std::vector<Topic> topics{pinDeclaration(dvpSignals()), pinDefaults(dvpSignals())};
    for (const QString &signal : dvpSignals())
        topics.push_back(pin(signal.toLower(), signal));
    const std::vector<Topic> rest{
        assignment("GenerateCode_DVP_init", "dvp_init_struct.capture_mode", "CaptureMode"),
        assignment("GenerateCode_DVP_init", "dvp_init_struct.pixel_clock_edge", "PixelClockEdge"),
        assignment("GenerateCode_DVP_init", "dvp_init_struct.data_width", "DataWidth"),
        assignment("GenerateCode_DVP_init", "dvp_init_struct.sync_mode", "SyncMode"),
        assignment("GenerateCode_DVP_init", "dvp_init_struct.horizontal_blanking", orSample("HorizontalBlanking")),
        assignment("GenerateCode_DVP_init", "dvp_init_struct.vertical_blanking", orSample("VerticalBlanking")),
        section("GenerateCode_DVP_codes", "embedded codes", isGiven("FrameStartCode"),
                {call("GenerateCode_DVP_codes", "dvp_sync_codes_set",
                      {"FrameStartCode", "LineStartCode", "LineEndCode", "FrameEndCode"})}),
        section("GenerateCode_DVP_window", "window crop", isTrue("WindowCrop"),
                {call("GenerateCode_DVP_window", "dvp_window_set", {"CropX", "CropY", "CropWidth", "CropHeight"})}),
        factors("horizontal scaling", "dvp_horizontal_scaling_set", QStringLiteral("Horizontal_Scaling_Resize")),
        factors("vertical scaling", "dvp_vertical_scaling_set", QStringLiteral("Vertical_Scaling_Resize")),
        factors("frame rate", "dvp_frame_rate_set", QStringLiteral("Frame_Rate_Contorl")),
        section("GenerateCode_DVP_DMA", "dma_mode", isRequested({""})),
        interruptEnable("Interrupt_CFD"),
        interruptEnable("Interrupt_OVR"),
        interruptEnable("Interrupt_ESE"),
        interruptEnable("Interrupt_VS"),
        interruptEnable("Interrupt_HS"),
        interruptRemarks(),
    };
    append(topics, rest);
    return topics;
}

} // namespace

const PeripheralTopics &dvpTopics()
{
    static const PeripheralTopics topics{
        .kind = "DVP",
        .function = dvpFunction(),
        .branches = {{"_CFD_FLAG", isTrue("Interrupt_CFD")},
                     {"_OVR_FLAG", isTrue("Interrupt_OVR")},
                     {"_ESE_FLAG", isTrue("Interrupt_ESE")},
                     {"_VS_FLAG", isTrue("Interrupt_VS")},
                     {"_HS_FLAG", isTrue("Interrupt_HS")}},
    };
    return topics;
}

} // namespace ChipLoom
