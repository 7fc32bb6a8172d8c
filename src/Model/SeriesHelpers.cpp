#include "Model/SeriesHelpers.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

constexpr std::array<SeriesTraits, 30> Series{{
    {ZV32F403, "ZV32F403", "f403", "ZV32F403", true, false, true},
    {ZV32F413, "ZV32F413", "f413", "ZV32F413", true, true, true},
    {ZV32F415, "ZV32F415", "f415", "ZV32F415", true, true, true},
    {ZV32F403A, "ZV32F403A", "f403a_407", "ZV32F403A_407", true, true, true},
    {ZV32F407, "ZV32F407", "f403a_407", "ZV32F403A_407", true, true, true},
    {ZV32F421, "ZV32F421", "f421", "ZV32F421", true, false, true},
    {ZV32F435, "ZV32F435", "f435_437", "ZV32F435_437", true, false, true},
    {ZV32F437, "ZV32F437", "f435_437", "ZV32F435_437", true, false, true},
    {ZV32F425, "ZV32F425", "f425", "ZV32F425", true, false, true},
    {ZV32L021, "ZV32L021", "l021", "ZV32L021", false, false, false, true},
    {ZV32WB415, "ZV32WB415", "wb415", "ZV32WB415", true, true, true},
    {ZV32F423, "ZV32F423", "f423", "ZV32F423", true, false, true},
    {ZV32F405, "ZV32F405", "f402_405", "ZV32F402_405", false, false, false},
    {ZV32F402, "ZV32F402", "f402_405", "ZV32F402_405", false, false, false},
    {ZV32F455, "ZV32F455", "f45x", "ZV32F45x", false, false, false},
    {ZV32F456, "ZV32F456", "f45x", "ZV32F45x", false, false, false},
    {ZV32F457, "ZV32F457", "f45x", "ZV32F45x", false, false, false},
    {ZV32A403A, "ZV32A403A", "a403a", "ZV32A403A", true, true, true},
    {ZV32M412, "ZV32M412", "m412_416", "ZV32M412_416", false, false, false},
    {ZV32M416, "ZV32M416", "m412_416", "ZV32M412_416", false, false, false},
    {ZV32A423, "ZV32A423", "a423", "ZV32A423", false, false, false},
    {ZV32F490, "ZV32F490", "f490", "ZV32F490", false, false, false},
    {ZV32F422, "ZV32F422", "f422_426", "ZV32F422_426", false, false, false},
    {ZV32F426, "ZV32F426", "f422_426", "ZV32F422_426", false, false, false},
    {ZV32F403E, "ZV32F403E", "f403e_407e", "ZV32F403E_407E", false, true, false},
    {ZV32F407E, "ZV32F407E", "f403e_407e", "ZV32F403E_407E", false, true, false},
    {ZV32F011, "ZV32F011", "f011", "ZV32F011", false, false, false, true},
    {ZV32F408, "ZV32F408", "f406_408", "ZV32F406_408", false, false, false},
    {ZV32F406, "ZV32F406", "f406_408", "ZV32F406_408", false, false, false},
    {ZV32F6221, "ZV32F6221", "f6221", "ZV32F6221", false, false, false},
}};

struct IdeName
{
    IDE_TYPE type;
    const char *text; // lower case, as stored
    const char *path;
};

constexpr std::array<IdeName, 10> IdeNames{{
    {IDE_ZV32_IDE, "zv32_ide", "ZV32_IDE"},
    {IDE_ECLIPSE_GCC, "eclipse_gcc", "Eclipse_gcc"},
    {IDE_IAR_V6_10, "iar_v6.10", ""},
    {IDE_IAR_V7_4, "iar_v7.4", "IAR_V7.4"},
    {IDE_IAR_V8_2, "iar_v8.2", "IAR_V8.2"},
    {IDE_IAR_V9_3, "iar_v9.3", "IAR_V9.3"},
    {IDE_MDK_V4, "mdk_v4", "MDK_V4"},
    {IDE_MDK_V5, "mdk_v5", "MDK_V5"},
    {IDE_MAKEFILE, "makefile", "Makefile"},
    {IDE_CMAKE, "cmake", "CMake"},
}};

// Indexed by bits 6 to 10 of the device code. Index 18 repeats 192; beyond index 17 the list is not sorted.
constexpr std::array<int, 23> FlashSizes{16,  24,   32,   48,   64,   72,   96,  128, 192,  256,  384, 512,
                                         768, 1024, 1536, 2048, 4096, 5120, 192, 960, 1984, 4032, 448};
// Indexed by bits 16 to 19.
constexpr std::array<int, 11> RamSizes{4, 8, 16, 32, 64, 96, 128, 256, 512, 20, 48};

struct FlashLetter
{
    int sizeKB;
    char letter;
};

constexpr std::array<FlashLetter, 26> FlashLetters{{
    {0, '0'},   {2, '1'},    {4, '2'},    {8, '3'},    {16, '4'},   {24, '5'},   {32, '6'},   {48, '7'},   {64, '8'},
    {72, '9'},  {96, 'A'},   {128, 'B'},  {192, 'Z'},  {256, 'C'},  {384, 'D'},  {448, 'D'},  {512, 'E'},  {768, 'F'},
    {960, 'P'}, {1024, 'G'}, {1536, 'H'}, {1984, 'I'}, {2048, 'I'}, {3072, 'K'}, {4032, 'M'}, {4096, 'M'},
}};

} // namespace

const SeriesTraits *seriesTraits(const QString &name)
{
    const auto row = std::find_if(Series.begin(), Series.end(),
                                  [&](const SeriesTraits &traits) { return name == QLatin1String(traits.name); });
    return row == Series.end() ? nullptr : &*row;
}

const SeriesTraits *seriesTraits(ZV32MCUSERIALS code)
{
    const auto row =
        std::find_if(Series.begin(), Series.end(), [&](const SeriesTraits &traits) { return traits.code == code; });
    return row == Series.end() ? nullptr : &*row;
}

QStringList allSeriesNames()
{
    QStringList names;
    for (const SeriesTraits &traits : Series)
        names.append(QLatin1String(traits.name));
    return names;
}

QString ZV32MCUSERIALS_To_MCUSerialString(ZV32MCUSERIALS series)
{
    const SeriesTraits *traits = seriesTraits(series);
    return traits ? QLatin1String(traits->name) : QString();
}

ZV32MCUSERIALS MCUSerialString_To_ZV32MCUSERIALS(const QString &series)
{
    const SeriesTraits *traits = seriesTraits(series);
    return traits ? traits->code : ZV32ErrorMCU2;
}

QString GetMCUSerialsSimple(const QString &serial, bool single)
{
    const QString name = serial.toUpper();
    const SeriesTraits *traits = seriesTraits(name);
    if (!traits)
        return {};
    return single ? name.mid(4).toLower() : QLatin1String(traits->group);
}

QString MCUSerialString_To_MCUConSerialString(const QString &series)
{
    const SeriesTraits *traits = seriesTraits(series);
    return traits ? QLatin1String(traits->connected) : series;
}

QString ZV32MCUSERIALS_To_MCUConSerialString(ZV32MCUSERIALS series)
{
    return MCUSerialString_To_MCUConSerialString(ZV32MCUSERIALS_To_MCUSerialString(series));
}

QString ZV32MCUSERIALS_To_ZVStartString(const QString &series)
{
    return QLatin1String("zv_start_") + series.mid(4).toLower();
}

bool Is_NewBSP_DirStruct(ZV32MCUSERIALS series)
{
    return series > ZV32F426 && series != ZV32F011 && series != ZV32F6221;
}

bool Is_NewBSP_DirStruct(const QString &series)
{
    return Is_NewBSP_DirStruct(MCUSerialString_To_ZV32MCUSERIALS(series));
}

bool DeviceNameHaveCrossingLine(const QString &series)
{
    const SeriesTraits *traits = seriesTraits(series);
    return traits && traits->deviceNameDash;
}

IDE_TYPE IDETypeString2Enum(const QString &text)
{
    const QString lower = text.toLower();
    for (const IdeName &ide : IdeNames) {
        if (lower == QLatin1String(ide.text))
            return ide.type;
    }
    return IDE_ZV32_IDE;
}

QString getIDEPathName(IDE_TYPE type)
{
    for (const IdeName &ide : IdeNames) {
        if (ide.type == type)
            return QLatin1String(ide.path);
    }
    return {};
}

int GetFlashSizeFromMCUPID(quint32 pid)
{
    const quint32 index = (pid & 0x7C0) >> 6;
    return index < FlashSizes.size() ? FlashSizes[index] : 0;
}

int GetRAMSizeFromMCUPID(quint32 pid)
{
    const quint32 index = (pid & 0xF0000) >> 16;
    return index < RamSizes.size() ? RamSizes[index] : 0;
}

int GetFlashSectorSizeFromMCUPID(quint32 pid)
{
    switch ((pid & 0x7000) >> 12) {
    case 0:
        return GetFlashSizeFromMCUPID(pid) <= 255 ? 1024 : 2048;
    case 1:
        return 512;
    case 2:
        return 1024;
    case 3:
        return 2048;
    case 4:
        return 4096;
    default:
        return 0;
    }
}

QChar GetFlashSizeFlagFromSize(int sizeKB)
{
    for (const FlashLetter &entry : FlashLetters) {
        if (entry.sizeKB == sizeKB)
            return QLatin1Char(entry.letter);
    }
    return QChar(0);
}

} // namespace ChipLoom
