#include "Cli/CliPrompt.h"

#include <QCoreApplication>

namespace ChipLoom {

namespace {

QString shown(const QString &text)
{
    return QCoreApplication::translate("Prompt", text.toUtf8().constData());
}

/// The first button that does not close the box.
int buttonThatGoesOn(const PromptRequest &request)
{
    const int last = request.buttons.size() - 1;
    const int escape = request.escapeButton < 0 ? last : request.escapeButton;
    return escape == 0 && last > 0 ? 1 : 0;
}

} // namespace

int CliPrompt::ask(const PromptRequest &request)
{
    m_err << shown(request.title) << ": " << filledText(shown(request.text), request.textArguments) << '\n';
    if (!request.detail.isEmpty())
        m_err << request.detail << '\n';
    if (request.buttons.size() < 2)
        return 0;
    const int answer = m_yes ? buttonThatGoesOn(request) : request.defaultButton;
    if (!m_yes)
        m_leftQuestions = true;
    QStringList buttons;
    for (const QString &button : request.buttons)
        buttons.append(shown(button));
    m_err << QCoreApplication::translate("Cli", "[%1] answered: %2")
                 .arg(buttons.join(QLatin1String(" / ")), buttons.value(answer))
          << '\n';
    return answer;
}

} // namespace ChipLoom
