#include "QtPrinters.h"

#include "Base/Scheduler.h"
#include "Cli/CliPrompt.h"
#include "Cli/ClockListing.h"
#include "Cli/CommandLine.h"
#include "ClockConfig/ClockSettings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

struct Outcome
{
    int code;
    QString out, err;
};

Outcome run(const QStringList &arguments)
{
    QProcess process;
    process.start(CHIPLOOM_BIN_DIR "/chiploom-cli", QStringList{"--language", "en"} + arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST(SolveClock, ListsTheBestSettingsFirst)
{
    const Outcome plain = run({"solve-clock", "ZV32F435", "--sclk", "108", "--count", "2"});
    EXPECT_EQ(plain.code, 0) << plain.err.toStdString();
    EXPECT_EQ(plain.out, " SCLK (MHz)       ppm      AHB     APB1     APB2  PLL\n"
                         " 108.000000         0  108.000   54.000   54.000  pllms=1 pllns=108 pllfr=8\n"
                         " 107.750000   -2314.8  107.750   53.875   53.875  pllms=4 pllns=431 pllfr=8\n");

    const Outcome usb =
        run({"solve-clock", "f455", "--sclk", "192", "--hext", "12", "--usb", "--json", "--count", "1"});
    EXPECT_EQ(usb.code, 0) << usb.err.toStdString();
    const QJsonObject best = QJsonDocument::fromJson(usb.out.toUtf8()).array().first().toObject();
    EXPECT_EQ(best.value("settings").toString(), "pllms=1 pllns=64 pllfp=4 pllfu=16");
    EXPECT_EQ(best.value("usb").toDouble(), 48.0);
    EXPECT_EQ(best.value("apb3").toDouble(), 48.0);
}

TEST(SolveClock, WrongUsageIsToldWithTheLimits)
{
    struct Row
    {
        QStringList arguments;
        QString message;
    };
    const QList<Row> rows{
        {{"F435"}, "--sclk must be a number from 4 to 288."},
        {{"F421", "--sclk", "121"}, "--sclk must be a number from 4 to 120."},
        {{"F421", "--sclk", "fast"}, "--sclk must be a number from 4 to 120."},
        {{"F421", "--sclk", "72", "--hext", "26"}, "--hext must be a number from 4 to 25."},
        {{"F421", "--sclk", "72", "--usb"}, "ZV32F421 has no USB clock."},
        {{"F403", "--sclk", "72"}, "There is no clock tree of \"F403\"; these have one: ZV32F413, "},
    };
    for (const Row &row : rows) {
        const Outcome outcome = run(QStringList{"solve-clock"} + row.arguments);
        EXPECT_EQ(outcome.code, 2) << row.message.toStdString();
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.err.startsWith("chiploom-cli: " + row.message)) << outcome.err.toStdString();
    }
}

struct Page
{
    explicit Page(const QString &series) : prompt(err, false), state(*clockSeriesByText(series), scheduler, prompt) {}

    QString set(const QString &name, const QString &value) { return applyClockSetting(state, name, value, true); }

    QString told;
    QTextStream err{&told};
    Scheduler scheduler;
    CliPrompt prompt;
    ZV32MCUPLL state;
};

TEST(ClockListing, SettingsAreAppliedInTheirOwnWords)
{
    Page page("f435");
    EXPECT_EQ(page.set("hext", "25"), "");
    EXPECT_EQ(page.set("pllrcs", "hext"), "");
    EXPECT_EQ(page.set("sclk", "120"), "");
    EXPECT_EQ(page.set("apb1div", "4"), "");
    EXPECT_EQ(page.set("usb", "on"), "");
    EXPECT_EQ(page.state.Get_SYSCLK(), 120);
    EXPECT_EQ(page.state.Get_APB1CLK(), 30);
    EXPECT_TRUE(page.state.usbIsInUse());

    EXPECT_EQ(page.set("apb1div", "3"), "apb1div takes: 1, 2, 4, 8, 16");
    EXPECT_EQ(page.set("sclk", "289"), "sclk must be a number from 4 to 288.");
    EXPECT_EQ(page.told, "Error: sclk input error!\n");
    EXPECT_TRUE(page.set("apb3div", "2").startsWith("The clock of ZV32F435 has no \"apb3div\"; it has: rtcsel"));
    EXPECT_EQ(page.state.Get_SYSCLK(), 120);

    // What needs a crystal has one.
    Page crystals("f435");
    EXPECT_EQ(crystals.set("clkout1", "lext"), "");
    EXPECT_EQ(crystals.set("clkout2", "hext"), "");
    EXPECT_EQ(crystals.state.text(ClockField::Clkout1) + crystals.state.text(ClockField::Clkout2), "LEXTHEXT");

    // In a design the pins are assigned elsewhere.
    Page design("f435");
    EXPECT_EQ(applyClockSetting(design.state, "pllrcs", "HEXT", false),
              "High speed external crystal, Need to enable in \"Pin out Configuration--CRM\".");
    EXPECT_EQ(applyClockSetting(design.state, "clkout2pin", "PC9", false),
              "The pin of a clock output is chosen by the modes of CRM and on the pins");
    EXPECT_EQ(design.state.clock().Get_CLKOUT2_PinSelect(), CLKOUT2PIN_NONE);
}

TEST(ClockListing, ShowsFrequenciesLimitsAndProblems)
{
    Page page("F455");
    page.set("apb3div", "2");
    QString text;
    QTextStream out(&text);
    writeClock(out, page.state);
    EXPECT_TRUE(text.startsWith("Clock settings of ZV32F455\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("\n  apb3div          2        1, 2, 4, 8, 16\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("\n  APB3         96.000 MHz   up to 90 MHz   out of range\n")) << text.toStdString();
    EXPECT_TRUE(text.endsWith("Problems\n  Can not support apb3clk greater than 90MHz (APB3: 96.000 MHz)\n"))
        << text.toStdString();

    const QJsonObject json = clockJson(page.state);
    EXPECT_EQ(json.value("settings").toObject().value("pllns").toString(), "144");
    EXPECT_EQ(json.value("problems").toArray().size(), 1);
}

TEST(ShowClock, OfASeriesWithoutADevice)
{
    const Outcome shown = run({"show", "F423", "clock/hext=12", "clock/pllrcs=HEXT", "clock/sclk=120", "--json"});
    EXPECT_EQ(shown.code, 0) << shown.err.toStdString();
    const QJsonObject clock = QJsonDocument::fromJson(shown.out.toUtf8()).object().value("clock").toObject();
    EXPECT_EQ(clock.value("series").toString(), "ZV32F423");
    EXPECT_EQ(clock.value("settings").toObject().value("sclk").toString(), "120.000");

    const Outcome refused = run({"show", "F423", "clock/sclk=151"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.err,
              "Error: sclk input error!\nchiploom-cli: clock/sclk=151: sclk must be a number from 0 to 150.\n");
    EXPECT_EQ(run({"show", "F423", "pin/PA1=X"}).code, 2);
}

} // namespace
