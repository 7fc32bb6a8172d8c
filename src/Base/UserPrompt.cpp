#include "Base/UserPrompt.h"

namespace ChipLoom {

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
