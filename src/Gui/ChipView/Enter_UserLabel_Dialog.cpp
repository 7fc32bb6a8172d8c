#include "Gui/ChipView/Enter_UserLabel_Dialog.h"

#include "Gui/App/Style.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ChipLoom {

Enter_UserLabel_Dialog::Enter_UserLabel_Dialog(const QString &pinName, const QString &signal, const QString &label,
                                               QWidget *parent)
    : QDialog(parent), m_edit(new QLineEdit(label)), m_reason(new QLabel)
{
    setWindowTitle(tr("Enter Label"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *caption = new QLabel(tr("Label of %1 (%2):").arg(pinName, signal));
    caption->setBuddy(m_edit);
    caption->setTextFormat(Qt::PlainText);
    m_edit->selectAll();
    m_edit->setPlaceholderText(tr("Empty shows the signal's name"));
    Style::setRole(m_reason, Style::Role::Error);
    m_reason->setTextFormat(Qt::PlainText);
    m_reason->setWordWrap(true);
    m_reason->hide();
    auto *buttons = new QDialogButtonBox;
    auto *ok = buttons->addButton(tr("OK"), QDialogButtonBox::AcceptRole);
    buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    ok->setDefault(true);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(m_edit);
    layout->addWidget(m_reason);
    layout->addWidget(buttons);
    setMinimumWidth(280);

    connect(m_edit, &QLineEdit::textEdited, this, [this] {
        m_reason->hide();
        Style::setInvalid(m_edit, false);
    });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { emit UserLabelEditFinished(m_edit->text()); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void Enter_UserLabel_Dialog::showReason(const QString &reason)
{
    Style::setInvalid(m_edit, true);
    m_reason->setText(reason);
    m_reason->show();
    resize(width(), layout()->totalHeightForWidth(width()));
}

} // namespace ChipLoom
