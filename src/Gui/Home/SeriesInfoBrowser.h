#pragma once

#include "Model/xmloperation.h"

#include <QTextBrowser>

namespace ChipLoom {

/// Shows the information page of one series, in the language of the interface. Links open in the system's browser.
class SeriesInfoBrowser : public QTextBrowser
{
    Q_OBJECT
public:
    explicit SeriesInfoBrowser(const XMLOperation &xml, QWidget *parent = nullptr);

    /// A series without a page says so.
    void showSeries(const QString &series);
    void TranslatorUI();

private:
    void Open_SerialInfo_Clicked(const QUrl &link);

    XMLOperation m_xmlOperation;
    QString m_series;
    QString m_shownFile;
};

} // namespace ChipLoom
