#pragma once

#include "Base/UserPrompt.h"

#include <QList>
#include <QStringList>

namespace ChipLoom {

/// Answers by a script, then always in the same way, and keeps what was asked.
class ScriptedPrompt : public UserPrompt
{
public:
    static constexpr int Default = -1; ///< what Return means
    static constexpr int Last = -2;    ///< the last button, as Escape takes it

    /// `otherwise` is the answer once the script is through: one of the above, or the index of a button.
    explicit ScriptedPrompt(int otherwise = Default) : otherwise(otherwise) {}

    int ask(const PromptRequest &request) override
    {
        requests.append(request);
        if (!answers.isEmpty())
            return answers.takeFirst();
        if (otherwise == Default)
            return request.defaultButton;
        return otherwise == Last ? request.buttons.size() - 1 : otherwise;
    }

    /// "Title: text" of each question since the last call.
    QStringList takeTexts()
    {
        QStringList texts;
        for (const PromptRequest &request : std::as_const(requests))
            texts.append(request.title + QLatin1String(": ") + filledText(request.text, request.textArguments));
        requests.clear();
        return texts;
    }

    QList<int> answers;
    QList<PromptRequest> requests;
    int otherwise;
};

} // namespace ChipLoom
