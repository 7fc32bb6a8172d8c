#include "Gui/App/WindowPrompt.h"

#include <QCoreApplication>
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
    QString text = shown(request.text);
    for (const QString &argument : request.textArguments)
        text = text.arg(argument);

    QMessageBox box(iconOf(request.kind), shown(request.title), text, QMessageBox::NoButton, m_window);
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
