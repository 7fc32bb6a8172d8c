#pragma once

#include "Design/DesignChange.h"

#include <QPointer>
#include <QWidget>

class QAction;
class QLabel;
class QMenu;
class QToolBar;

namespace ChipLoom {

class ChipScene;
class Design;
struct LostChoice;
class Enter_UserLabel_Dialog;
class PinGraphicsView;
class SearchBox;

/// The package of the open design with its pins: zoom, rotation, search, the menus of the pins. Follows the design it
/// was made for through every opening and clearing; what stands where is decided by the design alone.
class ChipView : public QWidget
{
    Q_OBJECT
public:
    explicit ChipView(Design &design, QWidget *parent = nullptr);
    ~ChipView() override;

    /// The tool actions, for a menu of the window.
    const QList<QAction *> &toolActions() const { return m_actions; }
    ChipScene *scene() const { return m_GraphicsScene; }
    PinGraphicsView *view() const { return m_GraphicsView; }
    SearchBox *searchBox() const { return m_QuerySignals_ComboBox; }
    /// What the last change of a pin switched off; hidden while there is nothing to say.
    QLabel *noteLine() const { return m_note; }
    int rotatedValue() const { return m_RotatedValue; }
    void TranslatorUI();

public slots:
    void ZoomIn();
    void ZoomOut();
    void ZoomReset();
    void FitToWindow();
    void Rotated_Clockwise();
    void Rotated_AnitClockwise();
    void SwitchPinNumDisplay();
    /// A name chosen from the search list.
    void QueryActived();
    /// A text typed into the search box.
    void QueryEditingFinished();
    /// Marks the pins of a peripheral; empty takes the marks off.
    void ReceiveQueryIPSignal(const QString &ipName);
    /// The menus of a pin; `corner` in scene coordinates.
    void showPinMenu(int pinNumber, const QPointF &corner);
    void showContextMenu(int pinNumber, const QPointF &corner);
    void EnterLabelAction(int pinNumber);
    /// Closes an open label form without taking its text.
    void CancelUserLabelForm();

signals:
    /// A pin's label was clicked: show where its signal comes from.
    void signalChosen(const QString &signalName, int pinNumber);
    /// A link in the note was clicked.
    void moduleAsked(const QString &instanceName);

private:
    void createActions();
    void createSearch();
    void drawDesign();
    void followChip(double largest);
    void showRotated();
    void UpdateQueryComboBox();
    void query();
    void showHits();
    void HandleTimeout();
    QPoint globalOf(const QPointF &scenePosition) const;
    void popup(QMenu *menu, const QPointF &corner);
    void applyChange(const DesignChange &change);
    void tellLost(const QList<LostChoice> &lost);
    void UserLabelEditFinished_Slot(const QString &pinName, const QString &label);

    Design &m_design;
    ChipScene *m_GraphicsScene;
    PinGraphicsView *m_GraphicsView;
    QLabel *m_title;
    QLabel *m_note;
    QToolBar *m_toolBar;
    SearchBox *m_QuerySignals_ComboBox;
    QAction *m_searchAction;
    QList<QAction *> m_actions;
    QPointer<QMenu> m_pinMenu;
    QPointer<Enter_UserLabel_Dialog> m_labelForm;
    QStringList m_queryNames;
    QString m_lastQuery;
    int m_RotatedValue = 0;
    bool m_hitsLit = false;
};

} // namespace ChipLoom
