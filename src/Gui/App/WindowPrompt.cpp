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

/// In one pass: an argument may itself hold "%1", as a path can.
QString filled(const QString &text, const QStringList &arguments)
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
    QMessageBox box(iconOf(request.kind), shown(request.title), filled(shown(request.text), request.textArguments),
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
