#pragma once

#include <QGraphicsView>

#include <functional>

namespace ChipLoom {

/// The view on a drawing that is zoomed about the cursor, dragged, and turned.
class PinGraphicsView : public QGraphicsView
{
    Q_OBJECT

public:
    static constexpr double MinimumScale = 0.2;
    static constexpr double MaximumScale = 5.0;

    explicit PinGraphicsView(QWidget *parent = nullptr);

    /// The item that `rotateView` turns, with its children; null for none.
    void SetGraphicsItem(QGraphicsItem *item) { m_item = item; }
    /// Turns the item to an angle in degrees.
    void rotateView(double degrees);

    void setTranslateSpeed(double speed) { m_translateSpeed = speed; }
    void setZoomDelta(double delta) { m_zoomDelta = delta; }
    double scaleFactor() const { return m_scale; }

    void zoomIn();
    void zoomOut();
    /// Back to scale 1; what stands in the middle stays there.
    void zoomReset();
    /// Zooms about the cursor if it stands over the view, else about the middle. A factor that leads out of
    /// `MinimumScale` to `MaximumScale` does nothing.
    void zoom(float factor);
    /// Moves the drawing by a distance in pixels of the view.
    void translateEx(const QPointF &delta);
    /// Shows all of a rectangle of the scene, as large as the limits allow, but not above `largest`.
    void fitToWindow(const QRectF &rect, double largest = MaximumScale);
    /// Shows a part of the scene whole, but not above `largest`, whatever size the window gets, until the user zooms or
    /// moves the drawing.
    void follow(std::function<QRectF()> content, double largest = 1.0);
    /// The part has changed.
    void fitFollowed();

signals:
    /// A click that was no drag, on no item that takes clicks itself.
    void clicked(const QPointF &scenePosition);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void zoomAbout(const QPoint &position, float factor);

    QGraphicsItem *m_item = nullptr;
    std::function<QRectF()> m_followed; ///< none once the user has zoomed or moved the drawing
    double m_largestFollowed = 1.0;
    double m_translateSpeed = 1.0;
    double m_zoomDelta = 0.2;
    double m_scale = 1.0;
    int m_wheelRest = 0; ///< of touchpads that turn in small steps, in eighths of a degree
    QPoint m_pressedAt;
    QPoint m_draggedTo;
    bool m_pressed = false;
    bool m_dragging = false;
};

} // namespace ChipLoom
