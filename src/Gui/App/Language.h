#pragma once

#include "Model/Enumerations.h"

#include <QLocale>
#include <QString>

class QTranslator;

namespace ChipLoom {

/// The language that the settings name ("UI_CH" or "UI_EN"), or else Chinese on a Chinese system and English on others.
LANGUAGE languageFrom(const QString &setting, const QLocale &system);

/// How the settings name a language.
QString languageSetting(LANGUAGE language);

/// The resource with the texts of a language.
QString translationFile(LANGUAGE language);

/// Puts the texts of another language in place of the installed ones and makes it the language of the program. False,
/// and nothing happens, if it is the language already or if the translator was not installed.
bool switchLanguage(QTranslator *translator, LANGUAGE language);

/// The same for Qt's own texts: buttons of its dialogs, menus of its fields. English where Qt's translations are not
/// installed. `switchLanguage` does it too.
void switchQtTexts(LANGUAGE language);

} // namespace ChipLoom
