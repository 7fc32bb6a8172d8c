#pragma once

#include "Base/UserPrompt.h"

namespace ChipLoom {

/// Asks and tells with modal boxes over the active window. Texts are translated with the context "Prompt"; the key
/// "Yes1" shows as "Yes".
class WindowPrompt : public UserPrompt
{
public:
    int ask(const PromptRequest &request) override;
};

} // namespace ChipLoom
