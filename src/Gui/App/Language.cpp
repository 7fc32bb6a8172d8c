#include "Gui/App/Language.h"

#include <QCoreApplication>
#include <QTranslator>

namespace ChipLoom {

LANGUAGE languageFrom(const QString &setting, const QLocale &system)
{
    for (const LANGUAGE language : {UI_EN, UI_CH}) {
        if (setting == languageSetting(language))
            return language;
    }
    return system.language() == QLocale::Chinese ? UI_CH : UI_EN;
}

QString languageSetting(LANGUAGE language)
{
    return language == UI_CH ? QStringLiteral("UI_CH") : QStringLiteral("UI_EN");
}

QString translationFile(LANGUAGE language)
{
    return language == UI_CH ? QStringLiteral(":/image/tr_zh.qm") : QStringLiteral(":/image/tr_en.qm");
}

bool switchLanguage(QTranslator *translator, LANGUAGE language)
{
    if (language == GlobalLanguage::g_CurrentLanguage || !QCoreApplication::removeTranslator(translator))
        return false;
    // Installed even if it did not load: only an installed translator can be taken out again.
    translator->load(translationFile(language));
    QCoreApplication::installTranslator(translator);
    GlobalLanguage::g_CurrentLanguage = language;
    return true;
}

} // namespace ChipLoom
