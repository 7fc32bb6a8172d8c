#pragma once

#include <QTabBar>
#include <QTabWidget>

namespace ChipLoom {

/// Tabs in as many rows as their names need; the names are never cut and never scroll. It stands above its pages in a
/// `CustomTabWidget`, whose width it has.
class MulitiRowTabBar : public QTabBar
{
    Q_OBJECT
public:
    explicit MulitiRowTabBar(QWidget *parent = nullptr);

    /// Where a tab stands in its row; `tabRect` knows one row only.
    QRect placeOf(int index) const { return places().value(index); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    QSize tabSizeHint(int index) const override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QVector<QRect> places() const;
    void paintTab(int index, const QVector<QRect> &all);
};

class CustomTabWidget : public QTabWidget
{
    Q_OBJECT
public:
    explicit CustomTabWidget(QWidget *parent = nullptr);
};

} // namespace ChipLoom
