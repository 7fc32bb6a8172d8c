#pragma once

#include "Design/DesignChange.h"
#include "Design/DesignReason.h"
#include "Model/ShareParameter.h"

#include <QLabel>
#include <QPointer>
#include <QWidget>

class QComboBox;
class QHBoxLayout;
class QLineEdit;
class QMenu;
class QSpacerItem;
class QToolButton;

namespace ChipLoom {

class Design;
class IP_ParamSettingConfiguration;

/// One parameter as a row: its label, its value as a box or a field, the base of numbers, and a way back to the
/// default.
class OneParamWidget : public QWidget
{
    Q_OBJECT
public:
    /// `unitWidth` is kept free for the unit, so that the fields of all rows are equally wide.
    OneParamWidget(Design &design, IP_ParamSettingConfiguration &parameters, QString instance,
                   const RefParameter &parameter, int unitWidth, QWidget *parent = nullptr);
    ~OneParamWidget() override;

    QString parameterName() const { return m_name; }
    QString labelText() const;
    /// Takes value, bounds and status of the parameter as it is now.
    void refresh(const RefParameter &parameter);

    QComboBox *valueBox() const { return m_paramValueComboBox; }
    QLineEdit *valueField() const { return m_paramValueLineEdit; }
    QComboBox *baseBox() const { return m_paramTypeComboBox; }
    /// Under the row: what is remarkable about the value. Hidden while there is nothing.
    QLabel *warningLine() const { return m_warning; }
    /// Beneath the field while it is edited: the allowed range, or why what stands there cannot be taken. Null before
    /// the first edit.
    QLabel *entryHint() const { return m_entryHint; }
    /// Why values are closed, and the way to the modules that close them; empty if none is closed. Goes when it closes.
    QMenu *explanationMenu();

signals:
    /// A value was not taken; why.
    void refused(const QString &reason);
    void entered(const QString &annotation);
    /// The user wants to see another module.
    void moduleAsked(const QString &instance);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeEditor(const RefParameter &parameter);
    void fillBox(const RefParameter &parameter);
    void showWarning();
    /// Why a value is wrong. The row is known by its label here, not by the parameter's name.
    QString reasonText(const DesignAnswer &answer) const;
    void setBoundFont(bool changed);
    /// Puts a widget where its place was kept.
    void fill(QSpacerItem *&place, QWidget *widget);
    void showUnit(const QString &unit);
    void offerRestoring(bool offered);
    void Param_ComboBox_IndexChanged(int index);
    void Value_LineEdit_editingFinished();
    void ParamType_ComboBox_IndexChanged(int index);
    void change(const DesignChange &change);
    QString address() const { return m_instance + QLatin1Char('/') + m_name; }
    void showEntryHint();
    void makeEntryHint();

    QWidget *editor() const;

    const int m_unitWidth;
    Design &m_design;
    IP_ParamSettingConfiguration &m_parameters;
    QString m_instance;
    QString m_name;
    RefParameter m_PeripheralsParam;
    QLabel *m_paramNameLabel;
    QLineEdit *m_paramValueLineEdit = nullptr;
    QComboBox *m_paramValueComboBox = nullptr;
    QComboBox *m_paramTypeComboBox = nullptr;
    QHBoxLayout *m_line;
    QSpacerItem *m_unitPlace = nullptr;
    QLabel *m_unit = nullptr; ///< null until there is one
    QSpacerItem *m_restorePlace = nullptr;
    QToolButton *m_restore = nullptr; ///< null until the value differs from its default
    QLabel *m_warning;
    QPointer<QLabel> m_entryHint; // among the children of the list, which lives longer
};

} // namespace ChipLoom
