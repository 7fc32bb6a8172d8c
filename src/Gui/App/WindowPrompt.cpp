#include "Gui/App/WindowPrompt.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace ChipLoom {

namespace {

QString shown(const QString &key)
{
    return QCoreApplication::translate("Prompt", key.toUtf8().constData());
}

QMessageBox::Icon iconOf(PromptRequest::Kind kind)
{
    switch (kind) {
    case PromptRequest::Kind::Information:
        return QMessageBox::Information;
    case PromptRequest::Kind::Warning:
        return QMessageBox::Warning;
    case PromptRequest::Kind::Critical:
        return QMessageBox::Critical;
    case PromptRequest::Kind::Question:
        return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

} // namespace

int WindowPrompt::ask(const PromptRequest &request)
{
    QMessageBox box(iconOf(request.kind), shown(request.title), filledText(shown(request.text), request.textArguments),
                    QMessageBox::NoButton, QApplication::activeWindow());
    box.setInformativeText(request.detail);
    QList<QPushButton *> buttons;
    for (const QString &key : request.buttons)
        buttons.append(box.addButton(shown(key), QMessageBox::ActionRole));
    box.setDefaultButton(buttons.value(request.defaultButton));
    const int escape = request.escapeButton < 0 ? buttons.size() - 1 : request.escapeButton;
    box.setEscapeButton(buttons.value(escape));
    box.exec();
    return buttons.indexOf(static_cast<QPushButton *>(box.clickedButton()));
}

} // namespace ChipLoom
