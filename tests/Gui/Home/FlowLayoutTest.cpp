#include "Gui/Widgets/FlowLayout.h"

#include <QWidget>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

TEST(FlowLayout, BreaksLinesWhereTheWidthEnds)
{
    QWidget window;
    auto *layout = new FlowLayout(&window, 10, 5);
    QList<QWidget *> items;
    for (int i = 0; i < 3; ++i) {
        auto *item = new QWidget;
        item->setFixedSize(100, 20);
        layout->addWidget(item);
        items.append(item);
    }
    EXPECT_EQ(layout->heightForWidth(320), 20);
    EXPECT_EQ(layout->heightForWidth(319), 45);
    EXPECT_EQ(layout->heightForWidth(50), 70); // an item wider than the line still gets one

    window.resize(319, 100);
    window.show();
    EXPECT_EQ(items[1]->pos(), QPoint(110, 0));
    EXPECT_EQ(items[2]->pos(), QPoint(0, 25));

    items[0]->hide(); // leaves no gap
    layout->setGeometry(QRect(0, 0, 319, 100));
    EXPECT_EQ(items[1]->pos(), QPoint(0, 0));
}

} // namespace
