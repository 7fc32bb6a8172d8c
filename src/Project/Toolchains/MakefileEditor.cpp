#include "Project/Toolchains/MakefileEditor.h"

#include "Base/Version.h"
#include "Project/ProjectFiles.h"
#include "Project/Toolchains/LinkerSettings.h"
#include "Project/Toolchains/ProjectLists.h"
#include "Project/Toolchains/TextSections.h"

namespace ChipLoom {

namespace {

const QString Makefile = QStringLiteral("Makefile");

bool isAssembly(const QString &path)
{
    return path.endsWith(QLatin1String(".s"), Qt::CaseInsensitive);
}

/// All files of one kind as one list: the lines of the user's that stay come last.
QString sourceLines(const QString &section, bool assembly, bool first, const ProjectOrder &order)
{
    const ContinuedList former = continuedList(section);
    ProjectGroup all;
    for (const ProjectGroup &group : projectGroups(order)) {
        for (const QString &path : group.files) {
            if (isAssembly(path) == assembly && !path.endsWith(QLatin1String(".a")))
                all.files.append(path);
        }
    }
    QString result;
    for (const QString &path : mergedSources(all.files, listEntries(former.lines, {}), order, first))
        result += path + QLatin1String(" \\\n");
    return result + QLatin1Char('\n') + former.rest;
}

QString includeLines(const QString &section, bool first, const ProjectOrder &order)
{
    const ContinuedList former = continuedList(section);
    QString result;
    for (const QString &path : mergedIncludes(listEntries(former.lines, QStringLiteral("-I")), order, first))
        result += QLatin1String("-I") + path + QLatin1String(" \\\n");
    return result + QLatin1Char('\n') + former.rest;
}

QString defineLines(const QString &section, bool first, const ProjectOrder &order)
{
    const ContinuedList former = continuedList(section);
    QStringList defines = mergedDefines(listEntries(former.lines, QStringLiteral("-D")), order, first);
    defines.swapItemsAt(0, 1);
    for (QString &define : defines)
        define.prepend(QLatin1String("-D"));
    return defines.join(QLatin1String(" \\\n")) + QLatin1String("\n\n") + former.rest;
}

/// As make reads a value; a backslash, which could swallow the line's end, becomes "_".
QString makeText(const QString &text)
{
    QString result = utf8AsLatin1(text);
    result.replace(QLatin1Char('$'), QLatin1String("$$"));
    result.replace(QLatin1Char('\\'), QLatin1Char('_'));
    return result.replace(QLatin1Char('#'), QLatin1String("\\#"));
}

} // namespace

bool MakefileEditor::ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const
{
    return configLinkerSizes(order, account);
}

bool MakefileEditor::ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const
{
    TextSections file;
    if (!file.read(order, Makefile, account))
        return false;
    // The line of the version is only told, never needed.
    replaceFirst(file.text(), QStringLiteral("ZV32 Chip Loom V[0-9]+\\.[0-9]+\\.[0-9]+"),
                 QLatin1String("ZV32 Chip Loom ") + QLatin1String(ProgramVersion));
    file.set(QStringLiteral("TARGET"), QStringLiteral("(?:^|\\n)(TARGET *= *[^\\n]+)"),
             QLatin1String("TARGET = ") + makeText(order.projectName), account);
    file.edit(
        QStringLiteral("C_SOURCES"), QStringLiteral("C_SOURCES *= *\\\\\\n((?:[^#]*\\n)?)#"),
        [&](const QString &section) { return sourceLines(section, false, first, order); }, account);
    file.edit(
        QStringLiteral("ASM_SOURCES"), QStringLiteral("ASM_SOURCES *= *\\\\\\n((?:[^#]*\\n)?)#"),
        [&](const QString &section) { return sourceLines(section, true, first, order); }, account);
    file.edit(
        QStringLiteral("C_INCLUDES"), QStringLiteral("C_INCLUDES *= *\\\\\\n((?:-I[^#]*\\n)?\\n*)#"),
        [&](const QString &section) { return includeLines(section, first, order); }, account);
    file.edit(
        QStringLiteral("LDSCRIPT"), QStringLiteral("LDSCRIPT = ([^\\n]*\\.ld)(?=\\n)"),
        [&](const QString &script) { return first || isPackageLinkerFile(script) ? order.linkerFile() : script; },
        account);
    file.edit(
        QStringLiteral("C_DEFS"), QStringLiteral("C_DEFS *= *\\\\\\n((?:-D[^#]*\\n)?\\n*)#"),
        [&](const QString &section) { return defineLines(section, first, order); }, account);
    return file.write(order, account);
}

} // namespace ChipLoom
