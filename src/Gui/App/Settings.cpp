#include "Gui/App/Settings.h"

#include <QDir>
#include <QFileInfo>

namespace ChipLoom {

Settings::Settings(const XMLOperation &xml, UserPrompt &prompt, QObject *parent)
    : QObject(parent), m_xmlOperation(xml), m_prompt(prompt)
{
}

QString Settings::value(const QString &key) const
{
    QString value;
    m_xmlOperation.GetConfigValueFromXml(m_xmlOperation.paths().configFile(), key, value);
    return value;
}

void Settings::setValue(const QString &key, const QString &value)
{
    const QString file = m_xmlOperation.paths().configFile();
    const bool exists = QFileInfo::exists(file) || m_xmlOperation.CreateXMLFile(file);
    if (!exists || !m_xmlOperation.AppendConfigToXml(file, key, value))
        tellOnce();
}

void Settings::tellOnce()
{
    if (m_told)
        return;
    m_told = true;
    // A box must not stand in the middle of what stores a value: the window may not even be shown yet.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_prompt.tell(PromptRequest::Kind::Warning, QT_TRANSLATE_NOOP("Prompt", "Warning"),
                          QT_TRANSLATE_NOOP("Prompt", "The settings cannot be kept."),
                          tr("The program works as usual, but forgets its settings when it ends. This file cannot be "
                             "read or written:\n%1")
                              .arg(QDir::toNativeSeparators(m_xmlOperation.paths().configFile())));
        },
        Qt::QueuedConnection);
}

} // namespace ChipLoom
