#pragma once

#include "Base/UserPrompt.h"

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

} // namespace ChipLoom
