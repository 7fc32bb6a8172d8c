#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Gui/App/Style.h"
#include "Gui/Diagrams/CAN_Configuration_Diagram.h"
#include "Gui/Diagrams/DiagramFeed.h"
#include "Gui/Diagrams/I2C_Configuration_Diagram.h"
#include "Gui/Diagrams/OP_Configuration_Diagram.h"
#include "Gui/Diagrams/SPI_Configuration_Diagram.h"
#include "Gui/Diagrams/TMR_Configuration_Diagram.h"
#include "Gui/Modes/IP_ParamSettingWidget.h"
#include "Gui/Modes/ModePage.h"
#include "Gui/Modes/OneParamWidget.h"
#include "Model/xmloperation.h"
#include "ScriptedPrompt.h"

#include <QApplication>
#include <QFile>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <set>

using namespace ChipLoom;

namespace {

// What stands in a field of a drawing; nothing if the field is not shown.
QString shownIn(const ConfigurationDiagram &diagram, const char *field)
{
    for (QGraphicsItem *item : diagram.getGraphicsScene()->items()) {
        auto *proxy = qgraphicsitem_cast<QGraphicsProxyWidget *>(item);
        if (!proxy || !proxy->isVisible() || proxy->widget()->objectName() != QLatin1String(field))
            continue;
        if (auto *label = qobject_cast<QLabel *>(proxy->widget()))
            return label->text();
        return qobject_cast<QLineEdit *>(proxy->widget())->text();
    }
    return QStringLiteral("(hidden)");
}

bool shows(const ConfigurationDiagram &diagram, const QString &caption)
{
    const QList<QGraphicsItem *> items = diagram.getGraphicsScene()->items();
    return std::any_of(items.begin(), items.end(), [&](QGraphicsItem *item) {
        auto *text = qgraphicsitem_cast<QGraphicsTextItem *>(item);
        return text && text->isVisible() && text->toPlainText() == caption;
    });
}

QImage pictureOf(const ConfigurationDiagram &diagram)
{
    QGraphicsScene *scene = diagram.getGraphicsScene();
    QImage image(scene->sceneRect().size().toSize() * 2, QImage::Format_RGB32);
    QPainter painter(&image);
    scene->render(&painter);
    return image;
}

class DiagramTest : public testing::Test
{
protected:
    DiagramTest() : design(AppPaths(CHIPLOOM_BIN_DIR, CHIPLOOM_BIN_DIR), prompt)
    {
        EXPECT_TRUE(design.NewDesign("ZV32F403A", "ZV32F403AVGT7", "LQFP100"));
    }

    void set(const char *setting)
    {
        const DesignAnswer answer = design.apply(*DesignChange::fromSetting(QString::fromUtf8(setting)));
        ASSERT_TRUE(answer) << setting << ": " << answer.arguments.join(' ').toStdString();
        ASSERT_TRUE(design.scheduler().drain());
    }

    std::unique_ptr<ModePage> open(const char *instance)
    {
        auto page = std::make_unique<ModePage>(design, *design.module(instance), PeripheralsBaseInfo());
        page->resize(440, 900);
        page->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(page.get()));
        return page;
    }

    QString value(const char *instance, const char *name)
    {
        const RefParameter *entry = design.module(instance)->parameters().parameter(name);
        return entry ? entry->CurrentValue : QString();
    }

    ScriptedPrompt prompt;
    Design design;
};

TEST_F(DiagramTest, ATypedFrequencyBecomesDividerAndPeriodInOneChange)
{
    set("mode/TMR3/Activated=TRUE");
    const auto page = open("TMR3");
    auto *diagram = qobject_cast<TMR_Configuration_Diagram *>(page->parameterList()->diagram());
    ASSERT_TRUE(diagram);
    const DesignSnapshot before = design.snapshot();
    QLineEdit *field = diagram->overflowField();
    const auto type = [&](const char *text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
        ASSERT_TRUE(design.scheduler().drain());
    };
    for (const char *frequency : {"1000", "50", "0.25", "44100"}) {
        type(frequency);
        const double wanted = QString(frequency).toDouble();
        const double shown = value("TMR3", "OverflowFrequency").toDouble();
        EXPECT_NEAR(shown, wanted, wanted * 2e-3) << frequency;
        EXPECT_NEAR(field->text().toDouble(), shown, 1e-3) << frequency;
        EXPECT_EQ(shownIn(*diagram, "m_TMRx_DIV_LineEdit"), value("TMR3", "DividerValue"));
        EXPECT_EQ(shownIn(*diagram, "m_TMRx_PR_LineEdit"), value("TMR3", "Period"));
        // Shown, it is typed again and changes nothing.
        const QString period = value("TMR3", "Period");
        type(field->text().toUtf8());
        EXPECT_EQ(value("TMR3", "Period"), period);
    }
    EXPECT_FALSE(QApplication::overrideCursor());
    const QString divider = value("TMR3", "DividerValue");
    type("fast");
    EXPECT_TRUE(field->property("invalid").toBool());
    EXPECT_EQ(value("TMR3", "DividerValue"), divider);
    // Who leaves the field sees what the timer does, never what was only typed.
    field->graphicsProxyWidget()->clearFocus();
    EXPECT_NEAR(field->text().toDouble(), value("TMR3", "OverflowFrequency").toDouble(), 1e-1);
    field->selectAll();
    QTest::keyClicks(field, "2000");
    emit field->editingFinished(); // as Tab does
    ASSERT_TRUE(design.scheduler().drain());
    EXPECT_NEAR(value("TMR3", "OverflowFrequency").toDouble(), 2000, 4);
    ASSERT_TRUE(design.restore(before));
    EXPECT_EQ(value("TMR3", "DividerValue"), "0");
    EXPECT_EQ(value("TMR3", "Period"), "65535");
}

TEST_F(DiagramTest, NumbersThatBelongTogetherAreTakenTogetherOrNotAtAll)
{
    set("mode/TMR3/Activated=TRUE");
    set("params/TMR3=DividerValue=9,Period=99");
    EXPECT_EQ(value("TMR3", "DividerValue"), "9");
    EXPECT_EQ(value("TMR3", "Period"), "99");
    for (const char *bad : {"DividerValue=5,Period=70000", "Period=5,Nothing=1", "DividerValue=5,Period"})
        EXPECT_FALSE(design.apply({"params", "TMR3", bad})) << bad;
    EXPECT_EQ(value("TMR3", "DividerValue"), "9");
    EXPECT_EQ(value("TMR3", "Period"), "99");
}

TEST_F(DiagramTest, TheTimerShowsHowItCounts)
{
    set("mode/TMR3/Activated=TRUE");
    const auto page = open("TMR3");
    const ConfigurationDiagram &diagram = *page->parameterList()->diagram();
    EXPECT_TRUE(shows(diagram, "Up counter"));
    set("param/TMR3/CounterDirection=TMR_COUNT_DOWN");
    EXPECT_TRUE(shows(diagram, "Down counter"));
    EXPECT_FALSE(shows(diagram, "Up counter"));
    set("param/TMR3/CounterDirection=TMR_COUNT_TWO_WAY_1");
    EXPECT_TRUE(shows(diagram, "Up and down counter"));
    EXPECT_TRUE(shows(diagram, QString::fromUtf8("/ (2 \u00d7 TMRx_PR)")));
    set("mode/TMR3/Clock_source=External_Clock_B");
    EXPECT_TRUE(shows(diagram, "External clock"));
    EXPECT_EQ(shownIn(diagram, "m_TMRx_FOverflow_LineEdit"), "(hidden)") << "nobody knows the frequency";
    set("mode/TMR3/Activated=FALSE");
    EXPECT_LT(page->tabs()->indexOf(page->parameterList()), 0);
}

TEST_F(DiagramTest, ABitShowsItsSegmentsAndFollowsTheSelection)
{
    set("mode/CAN1/Activated=TRUE");
    const auto page = open("CAN1");
    const ConfigurationDiagram &diagram = *page->parameterList()->diagram();
    EXPECT_TRUE(shows(diagram, "Normal Bit Timing"));
    EXPECT_EQ(shownIn(diagram, "m_pictSample_LineEdit"), "87.5 %");
    EXPECT_EQ(shownIn(diagram, "m_pictBS1_LineEdit"), "13 tq");
    set("param/CAN1/BaudRate_Result_Select=CAN_RESULT_1");
    EXPECT_EQ(shownIn(diagram, "m_pictBS1_LineEdit"), "6 tq");
    EXPECT_EQ(shownIn(diagram, "m_pictBit_LineEdit"), "8 tq, 500 kbit/s");
    set("clock/sclkselect=HICK");
    set("param/CAN1/BaudRate=930");
    EXPECT_EQ(shownIn(diagram, "m_pictBS1_LineEdit"), QString::fromUtf8("\u2013")) << "nothing fits";

    CAN_Configuration_Diagram flexible(nullptr, CAN_TYPE_Nominal);
    EXPECT_TRUE(shows(flexible, "Nominal Bit Timing"));
    EXPECT_FALSE(shows(flexible, "Data Bit Timing"));
    flexible.ReciveCanParamValue({CAN_TYPE_NominalData, {1, 31, 8, 80, 500}, {1, 15, 4, 80, 2000}});
    EXPECT_TRUE(shows(flexible, "Data Bit Timing"));
    EXPECT_EQ(shownIn(flexible, "m_pictDataBS1_LineEdit"), "15 tq");
}

TEST_F(DiagramTest, AFrameFollowsPolarityPhaseAndOrder)
{
    set("mode/SPI1/Mode=Full_Duplex_Master");
    set("mode/SPI1/Hardware_CS=Hardware_CS_Output"); // for the frame of TI
    const auto page = open("SPI1");
    const ConfigurationDiagram &diagram = *page->parameterList()->diagram();
    std::set<QByteArray> pictures;
    for (const char *polarity : {"LOW", "HIGH"}) {
        for (const char *phase : {"1EDGE", "2EDGE"}) {
            for (const char *order : {"MSB", "LSB"}) {
                set(QByteArray("param/SPI1/CLKPolarity=SPI_CLOCK_POLARITY_").append(polarity));
                set(QByteArray("param/SPI1/CLKPhase=SPI_CLOCK_PHASE_").append(phase));
                set(QByteArray("param/SPI1/FirstBit=SPI_FIRST_BIT_").append(order));
                EXPECT_TRUE(shows(diagram, QStringLiteral("CPOL = %1, CPHA = %2")
                                               .arg(polarity == QByteArray("HIGH"))
                                               .arg(phase == QByteArray("2EDGE"))));
                const QImage picture = pictureOf(diagram);
                pictures.insert(QByteArray(reinterpret_cast<const char *>(picture.bits()), picture.sizeInBytes()));
            }
        }
    }
    EXPECT_EQ(pictures.size(), 8u);
    set("param/SPI1/TIMode=SPI_TIMODE_ENABLE");
    EXPECT_TRUE(shows(diagram, "TI frame"));
    EXPECT_FALSE(shows(diagram, "CPOL = 1, CPHA = 1"));
}

TEST_F(DiagramTest, WatchdogsAndTheBusShowTheirTimes)
{
    set("mode/WDT/Activated=TRUE");
    const auto watchdog = open("WDT");
    const ConfigurationDiagram &plain = *watchdog->parameterList()->diagram();
    EXPECT_EQ(shownIn(plain, "m_Time_Timeout_LineEdit"), value("WDT", "Time_Timeout") + " ms");
    EXPECT_EQ(shownIn(plain, "m_WindowValue_LineEdit"), "(hidden)");
    EXPECT_EQ(shownIn(plain, "m_CounterValue_LineEdit"), "4095");
    set("base/WDT/Counter=16");
    EXPECT_EQ(shownIn(plain, "m_CounterValue_LineEdit"), "0xFFF");
    EXPECT_TRUE(shows(plain, "Refresh the allowed"));

    set("mode/WWDT/Activated=TRUE");
    set("param/WWDT/Window=0x50");
    const auto window = open("WWDT");
    const ConfigurationDiagram &diagram = *window->parameterList()->diagram();
    EXPECT_EQ(shownIn(diagram, "m_WindowValue_LineEdit"), "0x50");
    EXPECT_EQ(shownIn(diagram, "m_ResetValue_LineEdit"), "0x3F");
    EXPECT_EQ(shownIn(diagram, "m_Time_RefreshTheWindow_LineEdit"), value("WWDT", "Time_RefreshTheWindow") + " ms");

    set("mode/I2C1/Mode=I2C");
    const auto bus = open("I2C1");
    const ConfigurationDiagram &times = *bus->parameterList()->diagram();
    EXPECT_EQ(shownIn(times, "m_picfSCL_LineEdit"), "1 / (100 KHz)");
    EXPECT_EQ(shownIn(times, "m_pictSUDAT_LineEdit"), QString::fromUtf8("\u2265 250 ns"));
    set("param/I2C1/I2C_Mode=I2C_Fast");
    EXPECT_EQ(shownIn(times, "m_pictSUDAT_LineEdit"), QString::fromUtf8("\u2265 100 ns"));

    OP_Configuration_Diagram amplifier;
    for (const char *name : {"INM0", "INM1", "INP0"})
        EXPECT_FALSE(shows(amplifier, name)) << name;
    amplifier.ReciveOPModeType(6);
    EXPECT_TRUE(shows(amplifier, "INP3 or DACx_OUT"));
    amplifier.ReciveOPModeType(5);
    EXPECT_TRUE(shows(amplifier, "INM1"));
    EXPECT_FALSE(shows(amplifier, "INP3 or DACx_OUT"));
    EXPECT_NE(shownIn(amplifier, "m_AttentionPoint1"), "(hidden)");
}

// Amplifiers come with later families: a peripheral of its own.
TEST(AmplifierDiagramTest, FollowsTheModeOfItsParameter)
{
    QTemporaryDir folder;
    QFile file(folder.filePath("op.xml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"(<IP><RefMode Name="On" BaseMode="Mode"><Parameter Name="OP_Mode"/></RefMode>
        <RefParameter Name="OP_Mode" Type="list" DefaultValue="OP_MODE_1"><PossibleValue Value="OP_MODE_1"/>
        <PossibleValue Value="OP_MODE_6"/></RefParameter></IP>)");
    file.close();
    const XMLOperation reader{AppPaths(folder.path(), folder.path())};
    Scheduler scheduler;
    IP_ParamSettingConfiguration parameters(
        "ZV32M412", "OP1", std::make_shared<const PeripheralTree>(reader.GetIPXMLInfo(file.fileName())), scheduler);
    DiagramFeed feed(parameters);
    const std::unique_ptr<ConfigurationDiagram> diagram(feed.makeDiagram("OP1"));
    ASSERT_TRUE(diagram);
    EXPECT_FALSE(feed.feed()) << "nothing is set up yet";
    parameters.ModeChange("Mode", "On");
    EXPECT_TRUE(feed.feed());
    EXPECT_TRUE(shows(*diagram, "INM0"));
    ASSERT_TRUE(parameters.ParamModefySlot("OP_Mode", "OP_MODE_6", CURRENTVALUETYPE_NONE));
    EXPECT_TRUE(feed.feed());
    EXPECT_TRUE(shows(*diagram, "INP3 or DACx_OUT"));
    EXPECT_FALSE(feed.makeDiagram("OPTION")) << "only the name and a number";
}

TEST_F(DiagramTest, ADarkPaletteDrawsItAnewWithTheSameValues)
{
    I2C_Configuration_Diagram diagram;
    diagram.ReciveI2CParamValue({false, 100, 50, 300, 200, 400e3});
    const QColor light = pictureOf(diagram).pixelColor(0, 0);
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, Qt::white);
    diagram.setPalette(dark);
    EXPECT_EQ(pictureOf(diagram).pixelColor(0, 0), QColor(30, 30, 30));
    EXPECT_NE(light, QColor(30, 30, 30));
    EXPECT_EQ(shownIn(diagram, "m_picTr_LineEdit"), "100 ns");
}

TEST_F(DiagramTest, ARateThatIsFarOffIsMarkedAndNoError)
{
    set("mode/USART1/Mode=Asynchronous");
    const auto page = open("USART1");
    EXPECT_FALSE(page->parameterList()->diagram());
    const auto line = [&] { return page->parameterList()->row("RealBaudRate")->warningLine(); };
    EXPECT_TRUE(line()->isHidden());
    EXPECT_TRUE(page->parameterList()->row("RealBaudRate")->valueField()->isReadOnly());
    set("clock/sclkselect=HICK");
    set("clock/apb2div=16");
    set("param/USART1/BaudRate=30300");
    ASSERT_FALSE(line()->isHidden());
    EXPECT_TRUE(line()->text().contains("is off by")) << line()->text().toStdString();
    EXPECT_TRUE(page->parameterList()->row("RealBaudRate")->toolTip().contains("is off by"));
    const int tab = page->tabs()->indexOf(page->parameterList());
    EXPECT_FALSE(page->tabs()->tabIcon(tab).isNull());
    EXPECT_EQ(design.module("USART1")->parameters().GetParamStatusFlag(), IPPARAMSTATUS_NORMAL);
    EXPECT_FALSE(design.module("USART1")->GetIPStatusFlag() & IPSTATUS_ERROR);
    QList<DesignProblem> problems;
    design.module("USART1")->collectProblems(problems);
    ASSERT_EQ(problems.size(), 1);
    EXPECT_TRUE(problems.first().isWarning);
    set("param/USART1/BaudRate=1200");
    EXPECT_TRUE(line()->isHidden());
    EXPECT_TRUE(page->tabs()->tabIcon(tab).isNull());
}

} // namespace
