#pragma once

#include "Base/UserPrompt.h"
#include "Model/xmloperation.h"

#include <QObject>

namespace ChipLoom {

/// What the program remembers from one run to the next (`config.xml`). If the file cannot be read or written the
/// program runs on, and says so once.
class Settings : public QObject
{
    Q_OBJECT
public:
    /// `prompt` must outlive this.
    Settings(const XMLOperation &xml, UserPrompt &prompt, QObject *parent = nullptr);

    /// Empty if nothing is stored under the key.
    QString value(const QString &key) const;
    /// Creates the file if it is missing.
    void setValue(const QString &key, const QString &value);

private:
    void tellOnce();

    XMLOperation m_xmlOperation;
    UserPrompt &m_prompt;
    bool m_told = false;
};

} // namespace ChipLoom
