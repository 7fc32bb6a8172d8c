#pragma once

#include <QLayout>

namespace ChipLoom {

/// Places its items in lines from left to right, as words in a text, and needs more height where it is given less
/// width.
class FlowLayout : public QLayout
{
    Q_OBJECT
public:
    explicit FlowLayout(QWidget *parent = nullptr, int horizontalSpacing = 12, int verticalSpacing = 6);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override;
    int count() const override { return m_items.size(); }
    QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    /// The height that the lines take in this width; moves the items if asked to.
    int arrange(const QRect &rect, bool move) const;

    QList<QLayoutItem *> m_items;
    int m_horizontalSpacing;
    int m_verticalSpacing;
};

} // namespace ChipLoom
