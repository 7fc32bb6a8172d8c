#include "GenerateCode/Peripherals/TimerStems.h"

#include "GenerateCode/SeriesGeneratorRow.h"

#include <QHash>
#include <QMutex>
#include <QPair>

#include <array>

namespace ChipLoom {

namespace {

constexpr const char *Advanced = "channels slave four external brake complementary3";
constexpr const char *General = "channels slave four external";
constexpr const char *NoExternal = "channels slave four";
constexpr const char *TwoChannels = "channels slave";
constexpr const char *OneChannel = "channels";
constexpr const char *TwoChannelsBrake = "channels slave brake complementary1";
constexpr const char *OneChannelBrake = "channels brake complementary1";
constexpr const char *Basic = "basic";

constexpr std::array Stems{
    TimerStem{"TMR1", "F402_F405 F406_F408 F415_WB415 F421 F422_F426 F423_A423 F425 L021_F011 M412_M416", Advanced},
    TimerStem{"TMR1_8", "F403A_F407_A403A F403E_F407E F413 F45x", Advanced},
    TimerStem{"TMR1_8_20", "F435_F437", Advanced},
    TimerStem{"TMR2", "F402_F405 F403A_F407_A403A F403E_F407E F406_F408 F413 F415_WB415 F423_A423 F425 F435_F437 F45x",
              General},
    TimerStem{"TMR3", "F421 F425 L021_F011", General},
    TimerStem{"TMR3_4",
              "F402_F405 F403A_F407_A403A F403E_F407E F406_F408 F413 F415_WB415 F422_F426 F423_A423 F435_F437 F45x "
              "M412_M416",
              General},
    TimerStem{"TMR5", "F403A_F407_A403A F403E_F407E F413 F415_WB415 F435_F437 F45x", NoExternal},
    TimerStem{"TMR6", "F421 F422_F426 L021_F011", Basic},
    TimerStem{"TMR6_7", "F402_F405 F403A_F407_A403A F403E_F407E F406_F408 F423_A423 F425 F435_F437 F45x M412_M416",
              Basic},
    TimerStem{"TMR9", "F402_F405 F406_F408 F413 F415_WB415 M412_M416", TwoChannels},
    TimerStem{"TMR9_12", "F403A_F407_A403A F403E_F407E F423_A423 F435_F437 F45x", TwoChannels},
    TimerStem{"TMR10_11", "F413 F415_WB415 M412_M416", OneChannel},
    TimerStem{"TMR10_11_13_14", "F402_F405 F403A_F407_A403A F403E_F407E F406_F408 F423_A423 F435_F437 F45x",
              OneChannel},
    TimerStem{"TMR13_14", "F425", OneChannel},
    TimerStem{"TMR14", "F421 F423_A423 L021_F011", OneChannel},
    TimerStem{"TMR15", "F421 F422_F426 F425 L021_F011", TwoChannelsBrake},
    TimerStem{"TMR16_17", "F421 F422_F426 F425 L021_F011", OneChannelBrake},
};

} // namespace

QStringList TimerStem::instances() const
{
    QStringList names;
    for (const QString &number : QString::fromLatin1(stem).mid(3).split(QLatin1Char('_')))
        names.append(QLatin1String("TMR") + number);
    return names;
}

QStringList TimerStem::featureList() const
{
    return splitNames(features);
}

bool TimerStem::isOf(const QString &group) const
{
    return QString::fromLatin1(groups).split(QLatin1Char(' ')).contains(group);
}

std::span<const TimerStem> timerStems()
{
    return Stems;
}

namespace {

const TimerStem *foundStem(ZV32MCUSERIALS series, const QString &instanceName)
{
    const SeriesGeneratorRow *row = seriesGeneratorRow(series);
    if (!row)
        return nullptr;
    const QString group = QString::fromLatin1(row->name).remove(QLatin1String("GenerateCode_All_"));
    const TimerStem *elsewhere = nullptr;
    for (const TimerStem &stem : Stems) {
        if (!stem.instances().contains(instanceName))
            continue;
        if (stem.isOf(group))
            return &stem;
        if (!elsewhere)
            elsewhere = &stem;
    }
    return elsewhere;
}

} // namespace

const TimerStem *timerStem(ZV32MCUSERIALS series, const QString &instanceName)
{
    static QMutex mutex;
    static QHash<QPair<int, QString>, const TimerStem *> known;
    const QMutexLocker lock(&mutex);
    const QPair<int, QString> key(series, instanceName);
    auto stem = known.constFind(key);
    if (stem == known.constEnd())
        stem = known.insert(key, foundStem(series, instanceName));
    return *stem;
}

} // namespace ChipLoom
