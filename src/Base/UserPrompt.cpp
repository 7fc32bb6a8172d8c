#include "Base/UserPrompt.h"

namespace ChipLoom {

QString filledText(const QString &text, const QStringList &arguments)
{
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        const int argument = text.at(i) == QLatin1Char('%') && i + 1 < text.size() ? text.at(i + 1).digitValue() : -1;
        if (argument >= 1 && argument <= arguments.size()) {
            result.append(arguments.at(argument - 1));
            ++i;
        } else {
            result.append(text.at(i));
        }
    }
    return result;
}

UserPrompt::~UserPrompt() = default;

void UserPrompt::tell(PromptRequest::Kind kind, const QString &title, const QString &text, const QString &detail)
{
    PromptRequest request;
    request.kind = kind;
    request.title = title;
    request.text = text;
    request.detail = detail;
    request.buttons = QStringList{QT_TRANSLATE_NOOP("Prompt", "Ok")};
    ask(request);
}

} // namespace ChipLoom
