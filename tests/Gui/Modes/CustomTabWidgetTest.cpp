#include "Gui/Widgets/CustomTabWidget.h"

#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

using namespace ChipLoom;

namespace {

TEST(CustomTabWidgetTest, EveryTabStandsWholeInItsRowAndIsChosenThere)
{
    CustomTabWidget tabs;
    const QStringList names{"Parameters Settings", "DMA Settings",  "EDMA Settings", "NVIC Settings",
                            "Interrupts Settings", "GPIO Settings", "Signals"};
    for (const QString &name : names)
        tabs.addTab(new QLabel(name), name);
    auto *bar = static_cast<MulitiRowTabBar *>(tabs.tabBar());
    tabs.resize(2000, 300);
    tabs.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&tabs));
    const int oneRow = bar->height();
    for (const int width : {2000, 392, 250, tabs.minimumSizeHint().width()}) {
        tabs.resize(width, 300);
        QRegion taken;
        for (int index = 0; index < tabs.count(); ++index) {
            const QRect place = bar->placeOf(index);
            EXPECT_TRUE(bar->rect().contains(place)) << names.at(index).toStdString() << " at " << width;
            EXPECT_GE(place.width(), bar->fontMetrics().horizontalAdvance(names.at(index)));
            EXPECT_TRUE(taken.intersected(place).isEmpty()) << names.at(index).toStdString() << " at " << width;
            taken += place;
            QTest::mouseClick(bar, Qt::LeftButton, {}, place.center());
            EXPECT_EQ(tabs.currentIndex(), index) << width;
        }
        EXPECT_GE(tabs.currentWidget()->mapTo(&tabs, QPoint()).y(), bar->height() - 2);
        EXPECT_EQ(bar->height() > oneRow, width < 2000);
    }
}

} // namespace
