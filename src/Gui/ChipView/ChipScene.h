#pragma once

#include "Gui/ChipView/PackageGeometry.h"

#include <QGraphicsScene>
#include <QHash>
#include <QSet>

namespace ChipLoom {

class PinAssignment;
class PinQGraphicsRectItem;
class PinQGraphicsTextItem;
class PinQGraphicsTextItemConfigedInfo;
class QGraphicsRectItemEXT;

/// The drawing of one package with the state of its pins. It reads the pin table and changes nothing; it can be
/// rendered without a view.
class ChipScene : public QGraphicsScene
{
    Q_OBJECT

public:
    explicit ChipScene(QObject *parent = nullptr);

    /// Draws the package of a pin table; a package of no known family gives an empty drawing. `pins` outlives it, or
    /// `clearChip` comes before its end.
    void drawChip(const PinAssignment &pins);
    void clearChip();

    /// Colours, labels and hover texts of these positions as the pin table has them now.
    void refreshPins(const QList<int> &pinNumbers);
    void refreshAllPins();

    /// Which pins a search hits, and in which half of the blinking they are.
    void showHits(const QSet<int> &pinNumbers, bool lit);
    /// Marks the pins of a peripheral.
    void markPins(const QSet<int> &pinNumbers);

    /// The body has been turned to 0, 90, 180 or 270 degrees: its texts stand upright again.
    void turnTextsUpright(int degrees);
    void setPinNumDisplay(bool shown);
    bool pinNumDisplay() const { return m_PinNumDisplay; }
    /// Takes texts of the current language.
    void TranslatorUI();

    QGraphicsRectItemEXT *body() const { return m_rectItem; }
    PinQGraphicsRectItem *pinItem(int pinNumber) const;
    /// Pins in the order of their numbers.
    const QList<PinQGraphicsRectItem *> &pinItems() const { return m_PinsRectItemList; }
    const PackageLayout &layout() const { return m_layout; }
    /// All that is drawn as the chip stands now: legend, room for the labels, and a small margin.
    QRectF contentRect() const;

signals:
    void menuRequested(int pinNumber, const QPointF &corner);
    void contextMenuRequested(int pinNumber, const QPointF &corner);
    void sendConfigedSignalInfo(const QString &signalName, int pinNumber);
    void sendConfigedSignalInfoQueryImmediately(const QString &signalName, int pinNumber);

protected:
    /// With the keyboard in, the first pin has the focus; arrows lead to the next pin on their side.
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct PinItems
    {
        PinPosition position;
        PinQGraphicsRectItem *rect = nullptr;
        PinQGraphicsTextItem *name = nullptr;
        PinQGraphicsTextItem *number = nullptr;
        PinQGraphicsTextItem *mark = nullptr;
        PinQGraphicsTextItemConfigedInfo *label = nullptr;
    };

    void DrawMCURect();
    void DrawMCUNameInMCURect();
    void DrawMCUATLogoInMCURect(const QPointF &bottomMiddle, qreal width);
    void DrawChipPinConfigColor();
    void placeLegend();
    void NewPin(const PinPosition &position);
    void refreshPin(PinItems &pin);
    QString toolTipOf(int pinNumber) const;
    /// The chip with its pins and the room for labels.
    QSizeF turnedChipSize() const;
    void turnUpright(const PinItems &pin);
    PinQGraphicsRectItem *neighbour(const PinQGraphicsRectItem &pin, const QPointF &direction) const;

    const PinAssignment *m_pins = nullptr;
    PackageLayout m_layout;
    QGraphicsRectItemEXT *m_rectItem = nullptr;
    PinQGraphicsTextItem *m_nameItem = nullptr;
    QGraphicsItem *m_legend = nullptr;
    QList<PinQGraphicsRectItem *> m_PinsRectItemList;
    QHash<int, PinItems> m_items;
    QSet<int> m_marked;
    int m_RotatedValue = 0;
    bool m_PinNumDisplay = true;
};

} // namespace ChipLoom
