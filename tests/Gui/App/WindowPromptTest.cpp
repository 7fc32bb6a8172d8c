#include "Gui/App/WindowPrompt.h"

#include "Gui/App/Language.h"
#include "QtPrinters.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGraphicsScene>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

/// What the box showed, and what came of a person's answer.
struct Answer
{
    QString title;
    QString text;
    QStringList buttons;
    int chosen = -2;
};

Answer answer(const PromptRequest &request, const std::function<void(QMessageBox &)> &person)
{
    Answer result;
    QTimer::singleShot(0, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        result.title = box->windowTitle();
        result.text = box->text();
        for (const QAbstractButton *button : box->buttons())
            result.buttons.append(button->text().remove(QLatin1Char('&')));
        person(*box);
    });
    WindowPrompt prompt;
    result.chosen = prompt.ask(request);
    return result;
}

PromptRequest saveQuestion()
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Question;
    request.title = "Question";
    request.text = "Save %1 to %2?";
    request.textArguments = QStringList{"100%2", "disk"};
    request.buttons = QStringList{"Yes1", "No", "Cancel"};
    return request;
}

TEST(WindowPrompt, AnswersWithTheChosenButtonAndEscapeCancels)
{
    const Answer second = answer(saveQuestion(), [](QMessageBox &box) {
        for (QAbstractButton *button : box.buttons()) {
            if (button->text() == "&No")
                QTest::mouseClick(button, Qt::LeftButton);
        }
    });
    EXPECT_EQ(second.chosen, 1);
    EXPECT_EQ(second.title, "Question");
    EXPECT_EQ(second.text, "Save 100%2 to disk?");

    const auto press = [](Qt::Key key) { return [key](QMessageBox &box) { QTest::keyClick(&box, key); }; };
    EXPECT_EQ(answer(saveQuestion(), press(Qt::Key_Escape)).chosen, 2);
    PromptRequest careful = saveQuestion();
    careful.defaultButton = 1;
    careful.escapeButton = 0;
    EXPECT_EQ(answer(careful, press(Qt::Key_Return)).chosen, 1);
    EXPECT_EQ(answer(careful, press(Qt::Key_Escape)).chosen, 0);

    // A letter answers where it begins one button alone.
    EXPECT_EQ(answer(saveQuestion(), press(Qt::Key_N)).chosen, 1);
    PromptRequest finished = saveQuestion();
    finished.buttons = QStringList{" Open Folder  ", " Open Project  ", "Leave"};
    EXPECT_EQ(answer(finished,
                     [](QMessageBox &box) {
                         QTest::keyClick(&box, Qt::Key_O);
                         QTest::keyClick(&box, Qt::Key_L);
                     })
                  .chosen,
              2);
}

TEST(WindowPrompt, StandsOverTheWindowThoughAnotherBoxHasJustClosed)
{
    QGraphicsScene drawing;
    for (int i = 0; i < 8; ++i)
        drawing.addWidget(new QLabel("288 MHz"));
    QWidget window;
    window.show();
    QApplication::setActiveWindow(nullptr);
    answer(saveQuestion(), [&](QMessageBox &box) {
        EXPECT_EQ(box.parentWidget(), &window);
        box.reject();
    });
}

TEST(WindowPrompt, AManyLinedDetailScrollsAboveTheButtons)
{
    PromptRequest request = saveQuestion();
    request.detail = QString("src/main.c: not carried over: the user code of \"0\"\n").repeated(200);
    answer(request, [&](QMessageBox &box) {
        EXPECT_LT(box.height(), 480);
        const auto *area = box.findChild<QPlainTextEdit *>();
        ASSERT_TRUE(area);
        EXPECT_EQ(area->toPlainText(), request.detail);
        EXPECT_LT(area->geometry().bottom(), box.findChild<QDialogButtonBox *>()->geometry().top());
        box.reject();
    });
}

TEST(WindowPrompt, IsNotCoveredByProgress)
{
    QProgressDialog shown, waiting;
    shown.show();
    waiting.setMinimumDuration(1);
    waiting.setValue(0);
    answer(saveQuestion(), [&](QMessageBox &box) {
        QTest::qWait(20);
        EXPECT_FALSE(shown.isVisible());
        EXPECT_FALSE(waiting.isVisible()) << "its time came meanwhile";
        EXPECT_TRUE(box.isVisible());
        box.reject();
    });
    EXPECT_TRUE(shown.isVisible());
}

TEST(WindowPrompt, ButtonsReadInTheLanguageOfTheProgram)
{
    struct Row
    {
        LANGUAGE language;
        const char *button;
        const char *reads;
    };
    for (const Row &row : {Row{UI_EN, "Yes1", "Yes"}, Row{UI_EN, "Ok", "Ok"}, Row{UI_CH, "Ok", "确定"}}) {
        QTranslator translator;
        ASSERT_TRUE(translator.load(translationFile(row.language)));
        QCoreApplication::installTranslator(&translator);
        PromptRequest request = saveQuestion();
        request.buttons = QStringList(row.button);
        const Answer shown = answer(request, [](QMessageBox &box) { box.reject(); });
        EXPECT_EQ(shown.buttons, QStringList(QString::fromUtf8(row.reads)));
    }
}

TEST(WindowPrompt, QtsOwnTextsFollowTheLanguage)
{
    const auto cancel = [] {
        QDialogButtonBox buttons(QDialogButtonBox::Cancel);
        return buttons.button(QDialogButtonBox::Cancel)->text();
    };
    const QString english = cancel();
    switchQtTexts(UI_CH);
    EXPECT_EQ(cancel(), QString::fromUtf8("取消"));
    switchQtTexts(UI_EN);
    EXPECT_EQ(cancel(), english);
}

} // namespace
