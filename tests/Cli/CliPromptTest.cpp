#include "Cli/CliPrompt.h"

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

PromptRequest question(const QStringList &buttons, int defaultButton, int escapeButton)
{
    PromptRequest request;
    request.kind = PromptRequest::Kind::Question;
    request.title = "Warning";
    request.text = "Drop %1?";
    request.textArguments = QStringList{"PA0"};
    request.detail = "Two pins.";
    request.buttons = buttons;
    request.defaultButton = defaultButton;
    request.escapeButton = escapeButton;
    return request;
}

TEST(CliPrompt, YesTakesTheButtonThatGoesOnAndSilenceTheDefault)
{
    struct Row
    {
        QStringList buttons;
        int defaultButton, escapeButton, withYes;
    };
    const QList<Row> rows{
        {{"Yes", "Cancel"}, 1, -1, 0},
        {{"Cancel", "Continue"}, 0, 0, 1},
        {{"Save", "Discard", "Cancel"}, 2, 2, 0},
    };
    for (const Row &row : rows) {
        QString text;
        QTextStream err(&text);
        CliPrompt silent(err, false);
        EXPECT_EQ(silent.ask(question(row.buttons, row.defaultButton, row.escapeButton)), row.defaultButton);
        EXPECT_TRUE(silent.leftQuestions());
        CliPrompt willing(err, true);
        EXPECT_EQ(willing.ask(question(row.buttons, row.defaultButton, row.escapeButton)), row.withYes);
        EXPECT_FALSE(willing.leftQuestions());
    }
}

TEST(CliPrompt, SaysWhatWasAskedAndHowItWasAnswered)
{
    QString text;
    QTextStream err(&text);
    CliPrompt prompt(err, false);
    prompt.ask(question({"Yes", "Cancel"}, 1, -1));
    EXPECT_EQ(text.toStdString(), "Warning: Drop PA0?\nTwo pins.\n[Yes / Cancel] answered: Cancel\n");

    // An argument that looks like a place is none.
    text.clear();
    PromptRequest move;
    move.title = "Warning";
    move.text = "Move %1 to %2?";
    move.textArguments = QStringList{"a%2b", "c%1"};
    move.buttons = QStringList{"Ok"};
    CliPrompt(err, false).ask(move);
    EXPECT_EQ(text.toStdString(), "Warning: Move a%2b to c%1?\n");

    text.clear();
    CliPrompt teller(err, false);
    teller.tell(PromptRequest::Kind::Critical, "Error", "100% of it failed.");
    EXPECT_EQ(text.toStdString(), "Error: 100% of it failed.\n");
    EXPECT_FALSE(teller.leftQuestions());
}

} // namespace
