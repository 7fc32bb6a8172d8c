#pragma once

#include "Base/UserPrompt.h"

#include <QList>

namespace ChipLoom {

/// Answers with the next scripted index, or with what Escape means, and keeps what was asked.
class ScriptedPrompt : public UserPrompt
{
public:
    int ask(const PromptRequest &request) override
    {
        asked.append(request);
        return answers.isEmpty() ? request.buttons.size() - 1 : answers.takeFirst();
    }

    /// The texts told since the last call, with their arguments filled in.
    QStringList takeTexts()
    {
        QStringList texts;
        for (const PromptRequest &request : asked) {
            QString text = request.title + QLatin1String(": ") + request.text;
            for (const QString &argument : request.textArguments)
                text = text.arg(argument);
            texts.append(text);
        }
        asked.clear();
        return texts;
    }

    QList<PromptRequest> asked;
    QList<int> answers;
};

} // namespace ChipLoom
