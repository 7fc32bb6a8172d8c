#include "Gui/Home/SeriesInfoBrowser.h"

#include "Base/AtomicFile.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QTextCodec>

namespace ChipLoom {

namespace {
constexpr qint64 MaxPageBytes = 4 * 1024 * 1024;
}

SeriesInfoBrowser::SeriesInfoBrowser(const XMLOperation &xml, QWidget *parent)
    : QTextBrowser(parent), m_xmlOperation(xml)
{
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, &SeriesInfoBrowser::Open_SerialInfo_Clicked);
}

void SeriesInfoBrowser::showSeries(const QString &series)
{
    m_series = series;
    const QString file = m_xmlOperation.seriesInfoFile(series, GlobalLanguage::g_CurrentLanguage);
    if (file == m_shownFile)
        return;
    m_shownFile = file;
    const ReadResult page = readFile(file, MaxPageBytes);
    if (!page.ok) {
        setPlainText(tr("There is no information page for %1.").arg(series));
        return;
    }
    setSearchPaths({QFileInfo(file).absolutePath()});
    QTextCodec *utf8 = QTextCodec::codecForName("UTF-8");
    setHtml(QTextCodec::codecForHtml(page.content, utf8)->toUnicode(page.content));
}

void SeriesInfoBrowser::TranslatorUI()
{
    if (!m_series.isEmpty())
        showSeries(m_series);
}

void SeriesInfoBrowser::Open_SerialInfo_Clicked(const QUrl &link)
{
    if (link.isRelative() && link.hasFragment()) {
        scrollToAnchor(link.fragment());
        return;
    }
    // The page is part of a database that may come from anywhere: it opens pages of the web and starts nothing else.
    if (link.scheme() == QLatin1String("https") || link.scheme() == QLatin1String("http"))
        QDesktopServices::openUrl(link);
}

} // namespace ChipLoom
