#include "Gui/App/WindowPrompt.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>

#include <algorithm>
#include <iterator>
#include <limits>

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

/// What a box stands over: a click there must not bury the box, which would leave a program that takes no input. When
/// another box has just closed, no window is active for a moment.
QWidget *windowInFront()
{
    if (QWidget *active = QApplication::activeWindow())
        return active;
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        const bool isEmbedded = window->graphicsProxyWidget(); // controls on a drawing have no parent either
        return window->isVisible() && window->windowType() == Qt::Window && !isEmbedded;
    });
    return shown == windows.end() ? nullptr : *shown;
}

/// What a box can hold without reaching over the edges of a small screen.
bool isShort(const QString &detail)
{
    constexpr int Lines = 12;
    constexpr int Characters = 1200;
    return detail.count(QLatin1Char('\n')) < Lines && detail.size() < Characters;
}

/// A letter that begins one button alone answers like that button.
QString withLetter(const QString &text, const QStringList &all)
{
    const auto first = [](const QString &button) { return button.trimmed().left(1).toUpper(); };
    const QString letter = first(text);
    const bool isAlone =
        std::count_if(all.begin(), all.end(), [&](const QString &button) { return first(button) == letter; }) == 1;
    if (!isAlone || letter < QLatin1String("A") || letter > QLatin1String("Z"))
        return text;
    return QString(text).insert(text.indexOf(text.trimmed()), QLatin1Char('&'));
}

/// Where the box would have its informative text: the buttons stay beneath it, on the screen.
void addScrolled(QMessageBox &box, const QString &detail)
{
    auto *area = new QPlainTextEdit(detail, &box);
    area->setReadOnly(true);
    area->setTabChangesFocus(true);
    const QFontMetrics metrics = area->fontMetrics();
    area->setMinimumSize(metrics.averageCharWidth() * 80, metrics.lineSpacing() * 14);
    auto *grid = static_cast<QGridLayout *>(box.layout());
    grid->addWidget(area, 1, 2);
}

/// Takes the boxes of progress away while it lives: they would cover what is asked, one that has not appeared yet too.
class ProgressAside
{
public:
    ProgressAside()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *box = qobject_cast<QProgressDialog *>(widget);
            if (!box)
                continue;
            box->setMinimumDuration(std::numeric_limits<int>::max());
            if (box->isVisible())
                m_boxes.append(box);
            box->hide();
        }
    }
    ~ProgressAside()
    {
        for (const QPointer<QProgressDialog> &box : qAsConst(m_boxes)) {
            if (box)
                box->show();
        }
    }
    Q_DISABLE_COPY(ProgressAside)

private:
    QList<QPointer<QProgressDialog>> m_boxes; ///< that were to be seen
};

} // namespace

int WindowPrompt::ask(const PromptRequest &request)
{
    const ProgressAside aside;
    QMessageBox box(iconOf(request.kind), shown(request.title), filledText(shown(request.text), request.textArguments),
                    QMessageBox::NoButton, windowInFront());
    if (isShort(request.detail))
        box.setInformativeText(request.detail);
    QStringList texts;
    std::transform(request.buttons.begin(), request.buttons.end(), std::back_inserter(texts), shown);
    QList<QPushButton *> buttons;
    for (const QString &text : qAsConst(texts))
        buttons.append(box.addButton(withLetter(text, texts), QMessageBox::ActionRole));
    box.setDefaultButton(buttons.value(request.defaultButton));
    if (!isShort(request.detail))
        addScrolled(box, request.detail); // behind the buttons, which lay the box out anew
    const int escape = request.escapeButton < 0 ? buttons.size() - 1 : request.escapeButton;
    box.setEscapeButton(buttons.value(escape));
    box.exec();
    return buttons.indexOf(static_cast<QPushButton *>(box.clickedButton()));
}

} // namespace ChipLoom
