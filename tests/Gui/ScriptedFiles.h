#pragma once

#include "Base/UserPrompt.h"
#include "Gui/App/FileChooser.h"

#include <QList>

namespace ChipLoom {

/// Answers by a script, then with the default button, and keeps what was asked.
class ScriptedPrompt : public UserPrompt
{
public:
    int ask(const PromptRequest &request) override
    {
        requests.append(request);
        return answers.isEmpty() ? request.defaultButton : answers.takeFirst();
    }

    QList<int> answers;
    QList<PromptRequest> requests;
};

/// Chooses one file for every question.
class ScriptedFiles : public FileChooser
{
public:
    QString openFile(QWidget *, const QString &, const QString &) override { return choose({}); }
    QString saveFile(QWidget *, const QString &, const QString &proposed, const QString &) override
    {
        return choose(proposed);
    }

    QString openFolder(QWidget *, const QString &, const QString &proposed) override { return choose(proposed); }

    QString answer;
    QString proposal;
    int asked = 0;

private:
    QString choose(const QString &proposed)
    {
        ++asked;
        proposal = proposed;
        return answer;
    }
};

} // namespace ChipLoom
