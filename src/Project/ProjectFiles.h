#pragma once

#include "Project/ProjectOrder.h"

namespace ChipLoom {

/// A project file as text. Bytes become Latin-1 characters, so that what a user wrote passes unchanged.
struct ProjectText
{
    bool ok = false;
    QString text;
    QString error; ///< for a person; empty if `ok`
};

ProjectText readProjectText(const QString &path);

/// Replaces a file of the project if its bytes differ and tells the account of it. `path` is absolute. False, with
/// `account.detail`, if it cannot be written; the old file stands then.
bool writeProjectText(const ProjectOrder &order, const QString &path, const QString &text, BuilderAccount &account);
bool writeProjectBytes(const ProjectOrder &order, const QString &path, const QByteArray &bytes,
                       BuilderAccount &account);

/// A name for a Latin-1 text: each UTF-8 byte is one character.
QString utf8AsLatin1(const QString &name);

/// A part of a Latin-1 text without the blanks around it. `QString::trimmed` would take the last byte of an "à" for
/// one.
QString withoutBlanks(const QString &text);

} // namespace ChipLoom
