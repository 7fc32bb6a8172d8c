#include "Model/SeriesHelpers.h"
#include "Model/ShareParameter.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <array>

using namespace ChipLoom;

namespace {

TEST(SeriesHelpers, NamesAndCodesAreInverseToEachOther)
{
    EXPECT_EQ(allSeriesNames().size(), 30);
    for (const QString &name : allSeriesNames()) {
        EXPECT_EQ(ZV32MCUSERIALS_To_MCUSerialString(MCUSerialString_To_ZV32MCUSERIALS(name)), name);
        EXPECT_EQ(GetMCUSerialsSimple(name.toLower(), true), name.mid(4).toLower());
        EXPECT_FALSE(GetMCUSerialsSimple(name, false).isEmpty());
    }
    for (const ZV32MCUSERIALS unnamed : {ZV32C421, ZV32ErrorMCU1, ZV32ErrorMCU2})
        EXPECT_EQ(ZV32MCUSERIALS_To_MCUSerialString(unnamed), "");
    EXPECT_EQ(MCUSerialString_To_ZV32MCUSERIALS("zv32f421"), ZV32ErrorMCU2);
    EXPECT_EQ(GetMCUSerialsSimple("zv32f421", false), "f421");
    EXPECT_EQ(GetMCUSerialsSimple("ZV32C421", false), "");
    EXPECT_EQ(ZV32MCUSERIALS_To_ZVStartString(ZV32MCUSERIALS_To_MCUSerialString(ZV32C421)), "zv_start_");
}

TEST(SeriesHelpers, SeriesOfOneGroupShareTheirNames)
{
    EXPECT_EQ(GetMCUSerialsSimple("ZV32F407", false), "f403a_407");
    EXPECT_EQ(GetMCUSerialsSimple("ZV32A403A", false), "a403a");
    EXPECT_EQ(MCUSerialString_To_MCUConSerialString("ZV32F456"), "ZV32F45x");
    EXPECT_EQ(MCUSerialString_To_MCUConSerialString("zv32f456"), "zv32f456");
    EXPECT_EQ(ZV32MCUSERIALS_To_MCUConSerialString(ZV32F405), "ZV32F402_405");
}

TEST(SeriesHelpers, TheNewPackageLayoutStartsAtACodeButForTwo)
{
    QStringList newer;
    for (const QString &name : allSeriesNames()) {
        if (Is_NewBSP_DirStruct(name))
            newer.append(name);
    }
    newer.sort();
    EXPECT_EQ(newer, (QStringList{"ZV32F403E", "ZV32F406", "ZV32F407E", "ZV32F408"}));
    EXPECT_TRUE(Is_NewBSP_DirStruct(ZV32C421));
    EXPECT_FALSE(Is_NewBSP_DirStruct(QString("unknown")));
}

TEST(SeriesHelpers, ToolchainsAreFoundInAnyCase)
{
    EXPECT_EQ(IDETypeString2Enum("IAR_V8.2"), IDE_IAR_V8_2);
    EXPECT_EQ(IDETypeString2Enum("Makefile"), IDE_MAKEFILE);
    EXPECT_EQ(IDETypeString2Enum(""), IDE_ZV32_IDE);
    EXPECT_EQ(getIDEPathName(IDE_IAR_V6_10), "");
    EXPECT_EQ(getIDEPathName(IDE_ECLIPSE_GCC), "Eclipse_gcc");
}

TEST(SeriesHelpers, SizesComeFromTheDeviceCode)
{
    struct Row
    {
        quint32 pid;
        int flashKB, ramKB, sectorBytes;
    };
    constexpr std::array<Row, 7> rows{{
        {0x0000'0100, 64, 4, 1024},    // flash 4, RAM 0, sector by size
        {0x0009'0240, 256, 20, 2048},  // 256 KB is above 255
        {0x0000'0200, 192, 4, 1024},   // 192 KB is not
        {0x000A'1480, 192, 48, 512},   // flash 18 repeats 192
        {0x0008'4580, 448, 512, 4096}, // flash 22, the last
        {0x000B'75C0, 0, 0, 0},        // each selector one above its last
        {0xFFF0'0000, 16, 4, 1024},    // the other bits mean nothing here
    }};
    for (const Row &row : rows) {
        EXPECT_EQ(GetFlashSizeFromMCUPID(row.pid), row.flashKB) << std::hex << row.pid;
        EXPECT_EQ(GetRAMSizeFromMCUPID(row.pid), row.ramKB) << std::hex << row.pid;
        EXPECT_EQ(GetFlashSectorSizeFromMCUPID(row.pid), row.sectorBytes) << std::hex << row.pid;
    }
    EXPECT_EQ(GetFlashSizeFlagFromSize(192), QChar('Z'));
    EXPECT_EQ(GetFlashSizeFlagFromSize(448), QChar('D'));
    EXPECT_EQ(GetFlashSizeFlagFromSize(100), QChar(0));
}

TEST(ShareParameter, PinsAndSignalsAreTheSameByTheirAlternatives)
{
    struct Row
    {
        const char *a, *b;
        bool samePin, sameSignal;
    };
    constexpr std::array<Row, 9> rows{{
        {" PA0 ", "PA0", true, true},
        {"PD0/HEXT_IN", "PD0", true, false},
        {"PD0/HEXT_IN", "HEXT_IN/PF0", true, false},
        {"PA1 (default)", "PA1", true, false},
        {"PA1", "PA10", false, false},
        {"pa1", "PA1", false, false},
        {"A;B", " B ", false, true},
        {"A;B", "C;A", false, true},
        {"", "PA0", false, false},
    }};
    for (const Row &row : rows) {
        EXPECT_EQ(IsPinNameSame(row.a, row.b), row.samePin) << row.a << " and " << row.b;
        EXPECT_EQ(IsPinNameSame(row.b, row.a), row.samePin) << row.b << " and " << row.a;
        EXPECT_EQ(IsSignalSame(row.a, row.b), row.sameSignal) << row.a << " and " << row.b;
    }
}

TEST(ShareParameter, TheLastOfEqualLabelsWins)
{
    QList<PossibleValue> list{{}, {}, {}};
    list[0].Comment = list[2].Comment = "8 bits";
    list[1].Comment = "9 bits";
    list[0].Comment_EN = "eight";
    list[0].Value = "A";
    list[1].Value = list[2].Value = "B";
    EXPECT_EQ(GetValueByComment(list, "8 bits"), "B");
    EXPECT_EQ(GetValueByComment(list, "eight"), "");
    EXPECT_EQ(GetCommentByValue(list, "B"), "8 bits");
    EXPECT_EQ(GetCommentByValue(list, "C"), "");
}

} // namespace
