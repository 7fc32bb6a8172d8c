#include "Base/Scheduler.h"
#include "Base/UserPrompt.h"
#include "ClockConfig/ZV32PLLConfig.h"
#include "Gui/App/Style.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/Clock/ZV32MCUPLLView.h"
#include "Gui/Clock/ZV32PLLConfigPage.h"
#include "Model/SeriesHelpers.h"
#include "ScriptedPrompt.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGraphicsProxyWidget>
#include <QGraphicsSimpleTextItem>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QTableWidget>
#include <QTranslator>
#include <QtTest>

#include <gtest/gtest.h>

namespace ChipLoom {
namespace {

class ClockPage : public ::testing::Test
{
protected:
    ClockPage()
    {
        Style::apply(*qApp);
        page.resize(1440, 900);
    }

    void open(ZV32MCUSERIALS series)
    {
        clock.newConfig(series);
        page.show();
        QApplication::processEvents();
    }
    ZV32MCUPLL &state() { return *clock.getMCUPLL(); }
    template <typename Widget> Widget *get(const ClockSubject &subject, int option = -1)
    {
        auto *widget = qobject_cast<Widget *>(page.view()->control(subject, option));
        EXPECT_NE(widget, nullptr);
        return widget;
    }
    void type(ClockField field, const QString &text)
    {
        auto *edit = get<QLineEdit>(field);
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
    void typeReturn(ClockField field, const QString &text)
    {
        type(field, text);
        QTest::keyClick(get<QLineEdit>(field), Qt::Key_Return);
    }
    void click(ClockField field, int option) { QTest::mouseClick(get<QRadioButton>(field, option), Qt::LeftButton); }
    QString branch(ClockBranch branch) { return get<QLineEdit>(branch)->text(); }

    Scheduler scheduler;
    ScriptedPrompt prompt{0};
    ZV32PLLConfig clock{scheduler, prompt};
    ZV32PLLConfigPage page{clock};
};

QColor textColor(const QWidget *widget)
{
    return widget->palette().color(QPalette::Active, QPalette::Text);
}

TEST_F(ClockPage, returnSolvesATypedTarget)
{
    open(ZV32F435);
    const double before = clock.Get_SYSCLK();
    type(ClockField::Sclk, QStringLiteral("144"));
    EXPECT_EQ(clock.Get_SYSCLK(), before);
    EXPECT_NE(get<QLineEdit>(ClockField::Sclk)->toolTip(), QString());
    EXPECT_TRUE(page.view()->hasTypedValue());
    QTest::keyClick(get<QLineEdit>(ClockField::Sclk), Qt::Key_Escape);
    EXPECT_FALSE(page.view()->hasTypedValue());
    EXPECT_EQ(state().text(ClockField::Sclk).toDouble(), before);
    type(ClockField::Sclk, QStringLiteral("144"));

    QTest::keyClick(get<QLineEdit>(ClockField::Sclk), Qt::Key_Return);
    EXPECT_EQ(get<QLineEdit>(ClockField::Sclk)->text(), QStringLiteral("144.000"));
    EXPECT_EQ(get<QLineEdit>(ClockField::PllMs)->text(), QStringLiteral("/1"));
    EXPECT_EQ(get<QLineEdit>(ClockField::PllNs)->text(), QStringLiteral("*144"));
    EXPECT_EQ(get<QComboBox>(ClockField::PllFr)->currentText(), QStringLiteral("/8"));
    EXPECT_EQ(branch(ClockBranch::Apb1), QStringLiteral("72.000"));
    EXPECT_FALSE(page.view()->hasTypedValue());

    typeReturn(ClockField::Sclk, QStringLiteral("289"));
    EXPECT_EQ(prompt.takeTexts(), QStringList{QStringLiteral("Error: sclk input error!")});
    EXPECT_EQ(clock.Get_SYSCLK(), 144.0);
    EXPECT_EQ(textColor(get<QLineEdit>(ClockField::Sclk)), QColor(Qt::red));
}

TEST_F(ClockPage, whatIsOnlyTypedChangesNothingAndIsGivenBack)
{
    open(ZV32F435);
    clock.SetHextFlag(true, false, false);
    auto *hext = get<QLineEdit>(ClockField::Hext);
    QSignalSpy edited(&clock, &ZV32PLLConfig::edited);
    QSignalSpy error(&clock, &ZV32PLLConfig::SendClockHaveErrorSignal);
    type(ClockField::Hext, QStringLiteral("12"));
    type(ClockField::PllNs, QStringLiteral("50"));
    EXPECT_EQ(edited.count(), 0);
    const QString ns = QStringLiteral("*%1").arg(state().clock().Get_PLL_NS());
    page.view()->giveBackTyped();
    EXPECT_FALSE(page.view()->hasTypedValue());
    EXPECT_EQ(hext->text(), QStringLiteral("8"));
    EXPECT_EQ(get<QLineEdit>(ClockField::PllNs)->text(), ns);
    EXPECT_EQ(edited.count(), 0);

    // Esc leads back to what was accepted last, and to nothing before it.
    typeReturn(ClockField::Hext, QStringLiteral("12"));
    EXPECT_EQ(edited.count(), 1);
    QTest::keyClick(hext, Qt::Key_Return);
    EXPECT_EQ(edited.count(), 1) << "nothing new";
    QTest::keyClick(hext, Qt::Key_Escape);
    EXPECT_EQ(hext->text(), QStringLiteral("12"));
    typeReturn(ClockField::Hext, QStringLiteral("30"));
    EXPECT_TRUE(page.view()->hasTypedValue()) << "refused";
    EXPECT_TRUE(error.takeLast().first().toBool());
    QTest::keyClick(hext, Qt::Key_Escape);
    EXPECT_EQ(hext->text(), QStringLiteral("12"));
    EXPECT_FALSE(error.takeLast().first().toBool());
}

TEST_F(ClockPage, aTargetThatCannotBeMetSaysItsErrorAndOffersSolutions)
{
    open(ZV32F435);
    const QWidget *error = page.view()->control(ClockExtra::SclkError);
    typeReturn(ClockField::Sclk, QStringLiteral("144"));
    EXPECT_FALSE(error->isVisible());
    typeReturn(ClockField::Sclk, QStringLiteral("107.3"));
    const QString achieved = get<QLineEdit>(ClockField::Sclk)->text();
    EXPECT_NE(achieved, QStringLiteral("107.300"));
    EXPECT_TRUE(error->isVisible());
    const QString text = static_cast<const QLabel *>(error)->text();
    EXPECT_TRUE(text.startsWith(achieved + QStringLiteral(" MHz instead of 107.300\n"))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral(" ppm")));

    QTest::mouseClick(page.view()->control(ClockExtra::Solutions), Qt::LeftButton);
    auto *table = page.findChild<QTableWidget *>();
    ASSERT_NE(table, nullptr);
    ASSERT_GT(table->rowCount(), 2);
    EXPECT_EQ(table->item(0, 1)->text(), achieved);
    // The third best, by keyboard.
    const QString third = table->item(2, 1)->text();
    EXPECT_NE(third, achieved);
    QTest::keyClick(table, Qt::Key_Down);
    QTest::keyClick(table, Qt::Key_Down);
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_FALSE(table->isVisible());
    EXPECT_EQ(get<QLineEdit>(ClockField::Sclk)->text(), third);
    EXPECT_EQ(branch(ClockBranch::Ahb), third);
    EXPECT_TRUE(error->isVisible());

    // An edit of the PLL is no attempt at that target any more.
    typeReturn(ClockField::PllNs, QStringLiteral("100"));
    EXPECT_FALSE(error->isVisible());
}

TEST_F(ClockPage, sourcesAreChosenByClickAndArrowKeys)
{
    open(ZV32F435);
    EXPECT_FALSE(get<QRadioButton>(ClockField::SclkSelect, SYSCLK_HEXT)->isEnabled());
    EXPECT_TRUE(get<QRadioButton>(ClockField::SclkSelect, SYSCLK_HEXT)
                    ->toolTip()
                    .contains(QStringLiteral("Pin out Configuration--CRM")));
    clock.SetHextFlag(true, false, false);
    click(ClockField::SclkSelect, SYSCLK_HEXT);
    EXPECT_EQ(state().clock().Get_SYSCLKSelect(), SYSCLK_HEXT);
    EXPECT_EQ(branch(ClockBranch::Ahb), QStringLiteral("8.000"));
    EXPECT_FALSE(get<QLineEdit>(ClockField::Sclk)->isEnabled());
    EXPECT_FALSE(get<QLineEdit>(ClockField::PllMs)->isEnabled());

    // One step down the multiplexer, and no further than its ends.
    QTest::keyClick(get<QRadioButton>(ClockField::SclkSelect, SYSCLK_HEXT), Qt::Key_Up);
    EXPECT_EQ(state().clock().Get_SYSCLKSelect(), SYSCLK_HEXT);
    QTest::keyClick(get<QRadioButton>(ClockField::SclkSelect, SYSCLK_HEXT), Qt::Key_Down);
    EXPECT_EQ(state().clock().Get_SYSCLKSelect(), SYSCLK_PLL);
    EXPECT_TRUE(get<QRadioButton>(ClockField::SclkSelect, SYSCLK_PLL)->isChecked());
    EXPECT_FALSE(get<QRadioButton>(ClockField::SclkSelect, SYSCLK_HEXT)->isChecked());
}

TEST_F(ClockPage, aValueOutOfRangeIsRedAndSaysItsLimit)
{
    open(ZV32M412);
    auto *apb3 = get<QLineEdit>(ClockBranch::Apb3);
    EXPECT_NE(textColor(apb3), QColor(Qt::red));
    auto *divider = get<QComboBox>(ClockField::Apb3Div);
    QTest::keyClick(divider, Qt::Key_Up);
    QTest::keyClick(divider, Qt::Key_Up);
    EXPECT_EQ(apb3->text(), QStringLiteral("180.000"));
    EXPECT_EQ(textColor(apb3), QColor(Qt::red));
    EXPECT_EQ(apb3->toolTip(), QStringLiteral("Limit: up to 90 MHz"));
}

TEST_F(ClockPage, whatPeripheralsUseDecidesWhatCanBeEdited)
{
    open(ZV32F435);
    EXPECT_FALSE(get<QComboBox>(ClockField::UsbDiv)->isEnabled());
    QWidget *info = page.view()->control(ClockExtra::UsbInfo);
    EXPECT_TRUE(info->isVisible());
    EXPECT_EQ(info->toolTip(), QStringLiteral("hick to usb, Need to enable in \"Pin out Configuration--USB_OTGFS\"."));

    clock.SetUSBFS1Flag(true);
    EXPECT_FALSE(info->isVisible());
    click(ClockField::HickToUsb, HICK_TO_USB_DISABLE);
    EXPECT_TRUE(get<QComboBox>(ClockField::UsbDiv)->isEnabled());
    EXPECT_EQ(branch(ClockBranch::Usb), QStringLiteral("48.000"));

    clock.SetFREERTOSEnableFlag(true);
    auto *systick = get<QComboBox>(ClockField::SysticDiv);
    EXPECT_EQ(systick->currentText(), QStringLiteral("/1"));
    EXPECT_FALSE(systick->model()->flags(systick->model()->index(1, 0)).testFlag(Qt::ItemIsEnabled));
    EXPECT_EQ(systick->itemData(1, Qt::ToolTipRole).toString(),
              QStringLiteral("When FREERTOS is activated, this option is invalid."));
}

TEST_F(ClockPage, theModeBoxSwapsTheFormsOfThePll)
{
    open(ZV32F421);
    auto *mode = get<QComboBox>(ClockField::PllMode);
    auto *multiplier = get<QComboBox>(ClockField::PllMult);
    EXPECT_TRUE(multiplier->isVisible());
    EXPECT_FALSE(get<QLineEdit>(ClockField::PllNs)->isVisible());
    QTest::keyClick(mode, Qt::Key_Down);
    EXPECT_FALSE(multiplier->isVisible());
    EXPECT_TRUE(get<QLineEdit>(ClockField::PllNs)->isVisible());
    EXPECT_EQ(clock.Get_SYSCLK(), 120.0);
    // A hidden box keeps its value.
    EXPECT_EQ(multiplier->currentText(), QStringLiteral("*30"));
}

TEST_F(ClockPage, anInputWithoutMultiplierIsSaidInWords)
{
    open(ZV32F421);
    clock.SetHextFlag(true, false, false);
    click(ClockField::PllRc, PLLRC_HEXT);
    const auto *note = get<QLabel>(ClockExtra::PllNote);
    EXPECT_FALSE(note->isVisible());
    type(ClockField::Hext, QStringLiteral("5.1"));
    EXPECT_TRUE(page.view()->hasTypedValue()) << "a crystal that only stands there";
    QTest::keyClick(get<QLineEdit>(ClockField::Hext), Qt::Key_Return);
    EXPECT_FALSE(page.view()->hasTypedValue());
    EXPECT_TRUE(note->isVisible());
    EXPECT_EQ(note->text(), QStringLiteral("No multiplier exists for the present PLL input."));
    EXPECT_EQ(get<QComboBox>(ClockField::PllMult)->count(), 0);
}

TEST_F(ClockPage, theTabKeyWalksTheControlsInTheOrderOfTheTree)
{
    open(ZV32F435);
    QApplication::setActiveWindow(&page);
    page.view()->getGraphicsView()->setFocus();
    const auto focused = [this] {
        const QGraphicsItem *item = page.view()->getGraphicsScene()->focusItem();
        const auto *proxy = item ? qgraphicsitem_cast<const QGraphicsProxyWidget *>(item) : nullptr;
        return proxy ? proxy->widget() : nullptr;
    };
    // From outside it comes to each field that can be changed, once, and leaves again.
    QList<const QWidget *> reached;
    for (int i = 0; i < 100; ++i) {
        QTest::keyClick(page.view()->getGraphicsView(), Qt::Key_Tab);
        if (QApplication::focusWidget() != page.view()->getGraphicsView() || reached.contains(focused()))
            break;
        reached.append(focused());
    }
    for (const ClockField field : {ClockField::SclkSelect, ClockField::PllMs, ClockField::PllNs, ClockField::PllFr,
                                   ClockField::Sclk, ClockField::AhbDiv, ClockField::Apb1Div, ClockField::Apb2Div}) {
        const bool radios = field == ClockField::SclkSelect;
        EXPECT_EQ(reached.count(page.view()->control(field, radios ? SYSCLK_PLL : -1)), 1)
            << clockFieldName(*clockSeries(ZV32F435), field).toStdString();
    }
    EXPECT_EQ(reached.count(page.view()->control(ClockField::SclkSelect, SYSCLK_HICK)), 0) << "by the arrow keys";

    get<QLineEdit>(ClockField::PllMs)->setFocus();
    EXPECT_EQ(focused(), page.view()->control(ClockField::PllMs));
    for (const ClockField next : {ClockField::PllNs, ClockField::PllFr}) {
        QTest::keyClick(page.view()->getGraphicsView(), Qt::Key_Tab);
        EXPECT_EQ(focused(), page.view()->control(next));
    }
}

TEST_F(ClockPage, aListOpensAtItsButtonAndClosesOnAClickElsewhere)
{
    open(ZV32F435);
    const auto dialogs = [this] {
        QStringList titles;
        for (QGraphicsItem *item : page.view()->getGraphicsScene()->items()) {
            const auto *proxy = qgraphicsitem_cast<QGraphicsProxyWidget *>(item);
            if (proxy && proxy->isVisible() && qobject_cast<QDialog *>(proxy->widget()))
                titles.append(proxy->widget()->findChild<QLabel *>()->text());
        }
        return titles;
    };
    QList<QWidget *> buttons;
    for (const ClockMapList &list : page.view()->description().lists) {
        const auto *proxy = qgraphicsitem_cast<QGraphicsProxyWidget *>(
            page.view()->getGraphicsScene()->itemAt(list.rect.center(), QTransform()));
        buttons.append(proxy->widget());
    }
    ASSERT_EQ(buttons.size(), 4);
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    EXPECT_EQ(dialogs(), QStringList{QStringLiteral("TMR2")});
    QTest::mouseClick(buttons[3], Qt::LeftButton);
    EXPECT_EQ(dialogs(), QStringList{QStringLiteral("TMR1")});
    QTest::mouseClick(page.view()->getGraphicsView()->viewport(), Qt::LeftButton, {}, QPoint(400, 20));
    EXPECT_EQ(dialogs(), QStringList());
}

TEST_F(ClockPage, theMapIsWholeUntilTheUserZoomsAndWhenItIsToFit)
{
    open(ZV32F435);
    const PinGraphicsView *view = page.view()->getGraphicsView();
    const auto isWhole = [&] {
        const QRect shown = view->mapFromScene(page.view()->getPixmapRect()).boundingRect();
        return view->viewport()->rect().contains(shown) && view->viewport()->size() == view->maximumViewportSize();
    };
    for (const QSize size : {QSize(900, 700), QSize(1000, 500), QSize(700, 800)}) {
        page.resize(size);
        QApplication::processEvents();
        EXPECT_TRUE(isWhole()) << size.width();
    }
    page.resize(2000, 1200);
    QApplication::processEvents();
    EXPECT_EQ(view->transform().m11(), 1.0);
    page.ZoomIn();
    page.resize(900, 700);
    QApplication::processEvents();
    EXPECT_NEAR(view->transform().m11(), 1.2, 1e-6);
    page.FitToWindow();
    QApplication::processEvents(); // scroll bars go
    EXPECT_TRUE(isWhole());
    page.resize(2000, 1200);
    QApplication::processEvents();
    EXPECT_TRUE(isWhole());
    EXPECT_GT(view->transform().m11(), 1.3) << "asked to fit, a small map grows";
}

TEST_F(ClockPage, zoomResetBringsTheFrameBack)
{
    open(ZV32F435);
    page.ZoomIn();
    page.ZoomIn();
    page.ZoomReset();
    EXPECT_TRUE(page.view()->getGraphicsView()->transform().isIdentity());
    EXPECT_EQ(page.view()->getPixmapRect(), QRectF(0, 0, 1412, 833));
}

TEST_F(ClockPage, aChangeOfLanguageKeepsTheValues)
{
    open(ZV32F435);
    typeReturn(ClockField::Sclk, QStringLiteral("107.3"));
    const QString achieved = get<QLineEdit>(ClockField::Sclk)->text();
    const auto texts = [this] {
        QStringList texts;
        for (QGraphicsItem *item : page.view()->getGraphicsScene()->items()) {
            if (const auto *text = qgraphicsitem_cast<QGraphicsSimpleTextItem *>(item))
                texts.append(text->text());
        }
        return texts;
    };
    EXPECT_TRUE(texts().contains(QStringLiteral("System clock")));
    QTranslator chinese;
    ASSERT_TRUE(chinese.load(QStringLiteral(":/image/tr_zh.qm")));
    QApplication::installTranslator(&chinese);
    QApplication::processEvents();
    EXPECT_TRUE(texts().contains(QStringLiteral("系统时钟")));
    EXPECT_FALSE(texts().contains(QStringLiteral("System clock")));
    EXPECT_EQ(get<QLineEdit>(ClockField::Sclk)->text(), achieved);
    EXPECT_TRUE(get<QLabel>(ClockExtra::SclkError)->text().contains(QStringLiteral("107.300")));
    QApplication::removeTranslator(&chinese);
}

TEST_F(ClockPage, aConfirmedResetBringsTheStartStateBack)
{
    open(ZV32F435);
    typeReturn(ClockField::Sclk, QStringLiteral("287.9"));
    EXPECT_TRUE(get<QLabel>(ClockExtra::SclkError)->isVisible());
    prompt.otherwise = 1; // Cancel
    clock.ConfigReset();
    EXPECT_TRUE(get<QLabel>(ClockExtra::SclkError)->isVisible());
    prompt.otherwise = 0;
    clock.ConfigReset();
    EXPECT_FALSE(get<QLabel>(ClockExtra::SclkError)->isVisible());
    EXPECT_EQ(get<QLineEdit>(ClockField::PllNs)->text(), QStringLiteral("*144"));
}

TEST_F(ClockPage, aNewSeriesBringsItsOwnCanvasAndOneWithoutAClockNone)
{
    open(ZV32F435);
    open(ZV32F421);
    EXPECT_EQ(page.view()->control(ClockField::UsbDiv), nullptr);
    open(ZV32F403);
    EXPECT_EQ(page.view(), nullptr);
    page.ZoomIn();
}

/// Every control against the value object, without the words in between.
void expectInStep(const ZV32MCUPLLView &view, const ZV32MCUPLL &state)
{
    for (const ClockMapPlace &place : view.description().places) {
        const QWidget *widget = view.control(place.subject, place.option);
        if (const auto *branch = std::get_if<ClockBranch>(&place.subject)) {
            EXPECT_EQ(static_cast<const QLineEdit *>(widget)->text(),
                      QString::number(state.reading(*branch).mhz, 'f', 3));
        }
        const auto *field = std::get_if<ClockField>(&place.subject);
        if (!field)
            continue;
        const std::vector<ClockOption> options = clockOptions(state.clock(), *field);
        const double value = clockFieldValue(state.clock(), *field);
        if (const auto *radio = qobject_cast<const QRadioButton *>(widget)) {
            EXPECT_EQ(radio->isChecked(), options[std::size_t(place.option)].value == value);
        } else if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
            ASSERT_EQ(box->count(), int(options.size()));
            if (box->currentIndex() >= 0) {
                EXPECT_EQ(options[std::size_t(box->currentIndex())].value, value);
            } else {
                EXPECT_TRUE(std::none_of(options.begin(), options.end(),
                                         [value](const ClockOption &option) { return option.value == value; }));
            }
        } else if (const auto *edit = qobject_cast<const QLineEdit *>(widget); edit && isTypedClockField(*field)) {
            EXPECT_EQ(edit->text(), state.text(*field));
        }
    }
}

class ClockPageRandom : public ClockPage, public ::testing::WithParamInterface<ZV32MCUSERIALS>
{
};

TEST_P(ClockPageRandom, editsNeverLeaveValuesAndControlsApart)
{
    open(GetParam());
    clock.SetHextFlag(true, false, false);
    clock.SetLextFlag(true, false);
    clock.SetUSBFlag(true);
    clock.SetADC1Flag(true);
    clock.SetCAN1Flag(true);
    clock.SetClockOutPin(1);
    clock.SetClockOut1Pin(1);
    QRandomGenerator random(GetParam());
    const QVector<ClockMapPlace> &places = page.view()->description().places;
    for (int round = 0; round < 300; ++round) {
        const ClockMapPlace &place = places[random.bounded(places.size())];
        QWidget *widget = page.view()->control(place.subject, place.option);
        if (!widget->isEnabled() || !widget->isVisible())
            continue;
        prompt.otherwise = random.bounded(2);
        if (qobject_cast<QRadioButton *>(widget)) {
            QTest::mouseClick(widget, Qt::LeftButton);
        } else if (qobject_cast<QComboBox *>(widget)) {
            QTest::keyClick(widget, random.bounded(2) ? Qt::Key_Down : Qt::Key_Up);
        } else if (auto *edit = qobject_cast<QLineEdit *>(widget); edit && !edit->isReadOnly()) {
            edit->selectAll();
            QTest::keyClicks(edit, QString::number(random.bounded(310)));
            if (random.bounded(3))
                QTest::keyClick(edit, Qt::Key_Return);
        }
        expectInStep(*page.view(), state());
        if (HasFailure())
            FAIL() << "after round " << round << " at x " << place.rect.x() << ", y " << place.rect.y();
    }
}

std::vector<ZV32MCUSERIALS> onePerMap()
{
    std::vector<ZV32MCUSERIALS> codes;
    QSet<int> seen;
    for (const ClockSeries &series : allClockSeries()) {
        if (!seen.contains(int(series.map)))
            codes.push_back(series.code);
        seen.insert(int(series.map));
    }
    return codes;
}

INSTANTIATE_TEST_SUITE_P(EachMap, ClockPageRandom, ::testing::ValuesIn(onePerMap()),
                         [](const auto &info) { return ZV32MCUSERIALS_To_MCUSerialString(info.param).toStdString(); });

} // namespace
} // namespace ChipLoom
