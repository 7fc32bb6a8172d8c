#pragma once

#include "Base/UserPrompt.h"

#include <QTextStream>

namespace ChipLoom {

/// The voice of the command line: everything told or asked appears on standard error. Nobody sits there to answer, so a
/// question is answered by `--yes`, which takes the button that goes on, or else by its default.
class CliPrompt : public UserPrompt
{
public:
    CliPrompt(QTextStream &err, bool yes) : m_err(err), m_yes(yes) {}

    int ask(const PromptRequest &request) override;

    /// Whether a question was answered by its default: the command did not do all that it was asked to.
    bool leftQuestions() const { return m_leftQuestions; }

private:
    QTextStream &m_err;
    bool m_yes;
    bool m_leftQuestions = false;
};

} // namespace ChipLoom
