#include "Gui/App/Style.h"
#include "Gui/Clock/ArrowLineItem.h"
#include "Gui/Clock/ClockMaps.h"
#include "Gui/Clock/ZV32MCUPLLView.h"
#include "Model/SeriesHelpers.h"
#include "WidestModel.h"

#include <QApplication>
#include <QDir>
#include <QGraphicsProxyWidget>
#include <QGraphicsSimpleTextItem>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QTranslator>

#include <gtest/gtest.h>

namespace ChipLoom {
namespace {

struct NamedRect
{
    QString name;
    QRectF rect;
};

/// What can be read on the canvas: the texts, and of labels the part that is written on.
QVector<NamedRect> visibleTexts(const ZV32MCUPLLView &canvas)
{
    QVector<NamedRect> texts;
    for (QGraphicsItem *item : canvas.getGraphicsScene()->items()) {
        if (!item->isVisible())
            continue;
        if (const auto *text = qgraphicsitem_cast<QGraphicsSimpleTextItem *>(item))
            texts.append({text->text(), text->sceneBoundingRect().adjusted(0, 2, 0, -2)});
        const auto *proxy = qgraphicsitem_cast<QGraphicsProxyWidget *>(item);
        if (const auto *label = proxy ? qobject_cast<QLabel *>(proxy->widget()) : nullptr) {
            QRectF rect = label->fontMetrics().boundingRect(label->rect(), label->alignment(), label->text());
            texts.append({label->text(), rect.translated(proxy->scenePos()).adjusted(0, 2, 0, -2)});
        }
    }
    return texts;
}

QVector<NamedRect> visibleControls(const ZV32MCUPLLView &canvas)
{
    QVector<NamedRect> controls;
    for (QGraphicsItem *item : canvas.getGraphicsScene()->items()) {
        const auto *proxy = qgraphicsitem_cast<QGraphicsProxyWidget *>(item);
        if (proxy && proxy->isVisible() && !qobject_cast<QLabel *>(proxy->widget()))
            controls.append({proxy->widget()->metaObject()->className(), proxy->sceneBoundingRect()});
    }
    return controls;
}

/// The stretches of all visible wires, each as a thin rectangle.
QVector<NamedRect> visibleWires(const ZV32MCUPLLView &canvas)
{
    QVector<NamedRect> wires;
    const auto add = [&wires](QPointF a, QPointF b) {
        EXPECT_TRUE(a.x() == b.x() || a.y() == b.y());
        wires.append({QStringLiteral("wire (%1, %2)-(%3, %4)").arg(a.x()).arg(a.y()).arg(b.x()).arg(b.y()),
                      QRectF(a, b).normalized().adjusted(-0.5, -0.5, 0.5, 0.5)});
    };
    for (QGraphicsItem *item : canvas.getGraphicsScene()->items()) {
        if (!item->isVisible())
            continue;
        if (const auto *path = qgraphicsitem_cast<QGraphicsPathItem *>(item)) {
            for (int n = 1; n < path->path().elementCount(); ++n)
                add(path->path().elementAt(n - 1), path->path().elementAt(n));
        } else if (const auto *arrow = qgraphicsitem_cast<ArrowLineItem *>(item)) {
            add(arrow->line().p1(), arrow->line().p2());
        }
    }
    return wires;
}

void expectApart(const QVector<NamedRect> &a, const QVector<NamedRect> &b)
{
    for (const NamedRect &one : a) {
        for (const NamedRect &other : b) {
            if (&one != &other && one.rect.intersects(other.rect))
                ADD_FAILURE() << one.name.toStdString() << " meets " << other.name.toStdString() << " at x "
                              << other.rect.x() << ", y " << other.rect.y();
        }
    }
}

void save(const ZV32MCUPLLView &canvas, const QString &name, qreal scale)
{
    const QRectF rect = canvas.getGraphicsScene()->sceneRect();
    QImage image((rect.size() * scale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    canvas.getGraphicsScene()->render(&painter, {}, rect);
    const QDir folder(QStringLiteral(CHIPLOOM_BIN_DIR "/clock-maps"));
    folder.mkpath(QStringLiteral("."));
    image.save(folder.filePath(name + QStringLiteral(".png")));
}

/// One series in one language, with the widest content everywhere at once. The drawings land beside the tests as
/// clock-maps/<series>_<language>.png, the Chinese ones at twice the size.
class ClockMapLayout : public ::testing::TestWithParam<std::tuple<ZV32MCUSERIALS, const char *>>
{
protected:
    ClockMapLayout()
    {
        Style::apply(*qApp);
        if (m_translator.load(QStringLiteral(":/image/tr_%1.qm").arg(QLatin1String(std::get<1>(GetParam())))))
            QApplication::installTranslator(&m_translator);
    }
    ~ClockMapLayout() override { QApplication::removeTranslator(&m_translator); }

private:
    QTranslator m_translator;
};

TEST_P(ClockMapLayout, nothingOverlaps)
{
    const auto [code, language] = GetParam();
    const ClockSeries &series = *clockSeries(code);
    for (const ClockFormOnly form : {ClockFormOnly::Normal, ClockFormOnly::Flexible}) {
        WidestModel model;
        model.form = form;
        ZV32MCUPLLView canvas(series, model);
        canvas.resize(1440, 860);
        canvas.show();

        const auto texts = visibleTexts(canvas);
        const auto controls = visibleControls(canvas);
        const auto wires = visibleWires(canvas);
        expectApart(texts, texts);
        expectApart(texts, controls);
        expectApart(controls, controls);
        QVector<NamedRect> insides = controls;
        for (NamedRect &inside : insides)
            inside.rect.adjust(1, 1, -1, -1);
        expectApart(wires, texts);
        expectApart(wires, insides);
        for (const auto &items : {texts, controls, wires}) {
            for (const NamedRect &item : items)
                EXPECT_TRUE(canvas.getPixmapRect().adjusted(2, 2, -2, -2).contains(item.rect))
                    << item.name.toStdString() << " leaves the frame";
        }
        for (const NamedRect &text : texts)
            EXPECT_FALSE(text.rect.isEmpty());
        if (form == ClockFormOnly::Flexible)
            save(canvas, ZV32MCUSERIALS_To_MCUSerialString(code) + QLatin1Char('_') + QLatin1String(language),
                 language == QLatin1String("zh") ? 2 : 1);
    }
}

std::vector<ZV32MCUSERIALS> allCodes()
{
    std::vector<ZV32MCUSERIALS> codes;
    for (const ClockSeries &series : allClockSeries())
        codes.push_back(series.code);
    return codes;
}

INSTANTIATE_TEST_SUITE_P(AllSeries, ClockMapLayout,
                         ::testing::Combine(::testing::ValuesIn(allCodes()), ::testing::Values("en", "zh")),
                         [](const auto &info) {
                             return ZV32MCUSERIALS_To_MCUSerialString(std::get<0>(info.param)).toStdString() + "_" +
                                    std::get<1>(info.param);
                         });

} // namespace
} // namespace ChipLoom
