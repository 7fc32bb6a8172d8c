#pragma once

#include "Base/UserPrompt.h"

#include <QPointer>
#include <QWidget>

namespace ChipLoom {

/// Asks and tells with modal boxes. Texts are translated with the context "Prompt"; the key "Yes1" shows as "Yes".
class WindowPrompt : public UserPrompt
{
public:
    /// The window over which boxes stand; null lets them stand alone.
    void setParentWindow(QWidget *window) { m_window = window; }

    int ask(const PromptRequest &request) override;

private:
    QPointer<QWidget> m_window;
};

} // namespace ChipLoom
