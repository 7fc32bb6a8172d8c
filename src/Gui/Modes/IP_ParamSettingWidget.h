#pragma once

#include <QHash>
#include <QMap>
#include <QStringList>
#include <QTimer>
#include <QWidget>

class QLineEdit;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace ChipLoom {

class ConfigurationDiagram;
class Design;
class DiagramFeed;
class IP_ParamSettingConfiguration;
class OneParamWidget;

/// The parameters of a peripheral or middleware as foldable groups of rows, with a search box above, which opens the
/// groups of what it finds. Rows are made anew only when the set has other parameters; otherwise they take their new
/// values in place. A peripheral that has a drawing shows it above the groups.
class IP_ParamSettingWidget : public QWidget
{
    Q_OBJECT
public:
    IP_ParamSettingWidget(Design &design, IP_ParamSettingConfiguration &parameters, QString instance,
                          QWidget *parent = nullptr);

    /// Null if the parameter is not shown. Makes the rows that have not been made yet.
    OneParamWidget *row(const QString &parameterName);
    QLineEdit *searchField() const { return m_search; }
    /// Null for a module without a drawing.
    ConfigurationDiagram *diagram() const { return m_diagram; }
    void refresh();

signals:
    void refused(const QString &reason);
    void noteChanged(const QString &note);
    void moduleAsked(const QString &instance);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void RefreshParamsTable();
    void rebuild();
    struct Group
    {
        QWidget *widget = nullptr;
        QPushButton *header = nullptr;
        QWidget *rows = nullptr;
    };

    Group AddGroup(const QString &name, QWidget *parent);
    void addDiagram();
    void SetTMRParam_Div_Pr(unsigned int divider, unsigned int period);
    int rowsThatFill(int height) const;
    void makeRows(int count);
    void makeMoreRows();
    void makeAllRows();
    bool showsDiagram() const;
    void filterRows();
    void setAllFolded(bool folded);

    Design &m_design;
    IP_ParamSettingConfiguration &m_parameters;
    QString m_instance;
    QLineEdit *m_search;
    QScrollArea *m_scroll;
    QVBoxLayout *m_list;          ///< in the scroll area: the drawing, and the rows
    QWidget *m_content = nullptr; ///< the rows
    DiagramFeed *m_feed;
    ConfigurationDiagram *m_diagram = nullptr;
    Group m_diagramGroup;
    bool m_hasDrawing = false; ///< for the present modes
    QHash<QString, OneParamWidget *> m_rows;
    QHash<QString, Group> m_groups;
    QStringList m_shownNames; ///< of the rows, with their groups, in order
    int m_rowsMade = 0;       ///< the first of them
    int m_unitWidth = 0;      ///< of the widest unit
    QTimer m_moreRows;        ///< runs while rows are missing
    QMap<QString, bool> m_Group_HideStatus_Map;
    bool m_CurrentParmUIIsNewest = false;
};

/// A middleware shows its parameters as a peripheral does.
using Mid_ParamSettingWidget = IP_ParamSettingWidget;

} // namespace ChipLoom
