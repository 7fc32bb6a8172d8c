#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace ChipLoom {

/// The small form beside a pin in which its label is typed. It does not block the window.
class Enter_UserLabel_Dialog : public QDialog
{
    Q_OBJECT
public:
    /// `pinName` and `signal` say what is labelled; `label` is the present one.
    Enter_UserLabel_Dialog(const QString &pinName, const QString &signal, const QString &label, QWidget *parent);

    /// Says why the label was not taken; the form stays open.
    void showReason(const QString &reason);

signals:
    /// Return or "OK"; whoever takes the label closes the form.
    void UserLabelEditFinished(const QString &text);

private:
    QLineEdit *m_edit;
    QLabel *m_reason;
};

} // namespace ChipLoom
