#include "Project/Toolchains/CMakeEditor.h"

#include "Project/ProjectFiles.h"
#include "Project/Toolchains/LinkerSettings.h"
#include "Project/Toolchains/ProjectLists.h"
#include "Project/Toolchains/TextSections.h"

#include <algorithm>

namespace ChipLoom {

namespace {

const QString Indent = QStringLiteral("    ");
const QString SourceDir = QStringLiteral("${CMAKE_SOURCE_DIR}/");
const QString Drivers = QStringLiteral("ZV32_Drivers");

/// A library of the file and the folder of groups of which it is made.
struct LibraryRow
{
    const char *name;
    const char *groups; ///< names of groups or their beginnings, parted by blanks
};

constexpr LibraryRow Libraries[] = {{"I2C_Application", "middlewares/i2c_application"},
                                    {"RT-Thread_Nano", "middlewares/rt-thread"},
                                    {"FATFS", "middlewares/fatfs"},
                                    {"LWIP", "middlewares/lwip"},
                                    {"USBD_Driver", "middlewares/usbd_driver usbd_class"},
                                    {"USB_Driver", "middlewares/usb_driver usbh_class"},
                                    {"FreeRTOS", "middlewares/freertos"}};

/// What the file lists, sorted by where.
struct Lists
{
    QStringList application, drivers, archives;
    QList<ProjectGroup> libraries;
};

const char *libraryOf(const QString &group)
{
    for (const LibraryRow &row : Libraries) {
        for (const QString &one : QString::fromLatin1(row.groups).split(QLatin1Char(' '))) {
            if (group == one || group.startsWith(one + QLatin1Char('/')))
                return row.name;
        }
    }
    return nullptr;
}

Lists listsOf(const ProjectOrder &order)
{
    Lists lists;
    for (const LibraryRow &row : Libraries)
        lists.libraries.append({QLatin1String(row.name), {}});
    for (const ProjectGroup &group : projectGroups(order)) {
        const char *library = libraryOf(group.name);
        for (const QString &path : group.files) {
            if (path.endsWith(QLatin1String(".a")))
                lists.archives.append(path);
            else if (group.name == QLatin1String("firmware"))
                lists.drivers.append(path);
            else if (!library)
                lists.application.append(path);
            else
                for (ProjectGroup &one : lists.libraries) {
                    if (one.name == QLatin1String(library))
                        one.files.append(path);
                }
        }
    }
    lists.libraries.erase(std::remove_if(lists.libraries.begin(), lists.libraries.end(),
                                         [](const ProjectGroup &one) { return one.files.isEmpty(); }),
                          lists.libraries.end());
    return lists;
}

QString listLines(const QStringList &entries, const QString &prefix)
{
    QString text;
    for (const QString &entry : entries)
        text += Indent + prefix + entry + QLatin1Char('\n');
    return text;
}

/// The lines of a `set` whose entries lie below the project's root.
QString listExpression(const QString &name)
{
    return QStringLiteral("set\\(%1\\n((?: *\\$\\{CMAKE_SOURCE_DIR\\}[^\\)\\n]+\\n)*)\\)").arg(name);
}

/// As CMake reads a value: plain where it can be, else in quotes.
QString cmakeText(const QString &text)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_.+-]+$"));
    QString result = utf8AsLatin1(text);
    if (plain.match(result).hasMatch())
        return result;
    static const QRegularExpression special(QStringLiteral("([\\\\\"$])"));
    return QLatin1Char('"') + result.replace(special, QStringLiteral("\\\\1")) + QLatin1Char('"');
}

bool Config_CMakeLists_One_Cmake(const ProjectOrder &order, BuilderAccount &account)
{
    TextSections file;
    if (!file.read(order, QStringLiteral("CMakeLists.txt"), account))
        return false;
    file.set(QStringLiteral("CMAKE_PROJECT_NAME"),
             QStringLiteral("set\\(CMAKE_PROJECT_NAME *(\"(?:[^\"\\\\]|\\\\.)*\"|[^\\)]+)\\)"),
             cmakeText(order.projectName), account);
    return file.write(order, account);
}

bool Config_cmakefile_Cmake(const ProjectOrder &order, bool first, BuilderAccount &account)
{
    TextSections file;
    if (!file.read(order, QStringLiteral("cmake/gcc-arm-none-eabi.cmake"), account))
        return false;
    file.edit(
        QStringLiteral("CMAKE_SOURCE_DIR"), QStringLiteral("\\{CMAKE_SOURCE_DIR\\}/([^\\n\"]+\\.ld)"),
        [&](const QString &script) { return first || isPackageLinkerFile(script) ? order.linkerFile() : script; },
        account);
    return file.write(order, account);
}

void ModifyMCUNAME_CMake(TextSections &file, const ProjectOrder &order, bool first, BuilderAccount &account)
{
    file.edit(
        QStringLiteral("LM_Defines_Syms"), QStringLiteral("set\\(LM_Defines_Syms\\n([^)]*?)\\$<\\$"),
        [&](const QString &old) { return listLines(mergedDefines(listEntries(old, {}), order, first), {}) + Indent; },
        account);
}

void ModifyDriversMidllewares_Cmake(TextSections &file, const Lists &lists, BuilderAccount &account)
{
    QString sections;
    for (const ProjectGroup &library : lists.libraries)
        sections += QStringLiteral("set(%1_Src\n").arg(library.name) + listLines(library.files, SourceDir) +
                    QLatin1String(")\n");
    file.set(QStringLiteral("Drivers Middlewares"), QStringLiteral("# Drivers Middlewares\\n([^#]+)#"),
             sections + QLatin1Char('\n'), account);
}

/// The libraries of a former generation go, then those of this one follow that of the drivers.
void CreateMidllewaresStaticLibrary_Cmake(TextSections &file, const Lists &lists, BuilderAccount &account)
{
    for (const LibraryRow &row : Libraries) {
        const QString start = QStringLiteral("# Create %1 static library\n").arg(QLatin1String(row.name));
        if (file.text().contains(start)) // most are not there, and the expression takes its time to find that out
            file.text().remove(usedOnce(
                start + QStringLiteral("[^#]+\\(%1 PUBLIC zv32_chiploom\\)\\n+").arg(QLatin1String(row.name))));
    }
    QString sections;
    for (const ProjectGroup &library : lists.libraries)
        sections += QStringLiteral("# Create %1 static library\nadd_library(%1 OBJECT)\n"
                                   "target_sources(%1 PRIVATE ${%1_Src})\n"
                                   "target_link_libraries(%1 PUBLIC zv32_chiploom)\n\n")
                        .arg(library.name);
    file.edit(
        QStringLiteral("# Create ZV32_Drivers static library"),
        QStringLiteral("# Create ZV32_Drivers static library\\n[^#]+\\(ZV32_Drivers PUBLIC zv32_chiploom\\)(\\n+)"),
        [&](const QString &) { return QLatin1String("\n\n") + sections; }, account);
}

void ModifyProjectStaticLibraries_Cmake(TextSections &file, const Lists &lists, bool first, BuilderAccount &account)
{
    file.edit(
        QStringLiteral("LM_LINK_LIBS"), QStringLiteral("set\\(LM_LINK_LIBS\\n((?: *[^\\)\\n]+\\n)*)\\)"),
        [&](const QString &old) {
            QStringList names{Drivers};
            for (const ProjectGroup &library : lists.libraries)
                names.append(library.name);
            for (const QString &archive : lists.archives)
                names.append(SourceDir + archive);
            QStringList former{Drivers};
            for (const LibraryRow &row : Libraries)
                former.append(QLatin1String(row.name));
            for (const QString &name : listEntries(old, {})) {
                const bool archive = name.startsWith(SourceDir) && isOfPackage(name.mid(SourceDir.size()));
                const bool ours = former.contains(name) || archive;
                if (!first && !ours && !names.contains(name))
                    names.append(name);
            }
            return listLines(names, {});
        },
        account);
}

bool Config_CMakeLists_Two_Cmake(const ProjectOrder &order, bool first, BuilderAccount &account)
{
    TextSections file;
    if (!file.read(order, QStringLiteral("cmake/zv32_chiploom/CMakeLists.txt"), account))
        return false;
    const Lists wanted = listsOf(order);
    ModifyMCUNAME_CMake(file, order, first, account);
    file.edit(
        QStringLiteral("LM_Include_Dirs"), listExpression(QStringLiteral("LM_Include_Dirs")),
        [&](const QString &old) {
            return listLines(mergedIncludes(listEntries(old, SourceDir), order, first), SourceDir);
        },
        account);
    file.edit(
        QStringLiteral("LM_Application_Src"), listExpression(QStringLiteral("LM_Application_Src")),
        [&](const QString &old) {
            return listLines(mergedSources(wanted.application, listEntries(old, SourceDir), order, first), SourceDir);
        },
        account);
    file.edit(
        QStringLiteral("ZV32_Drivers_Src"), listExpression(QStringLiteral("ZV32_Drivers_Src")),
        [&](const QString &old) {
            return listLines(mergedSources(wanted.drivers, listEntries(old, SourceDir), order, first), SourceDir);
        },
        account);
    ModifyDriversMidllewares_Cmake(file, wanted, account);
    CreateMidllewaresStaticLibrary_Cmake(file, wanted, account);
    ModifyProjectStaticLibraries_Cmake(file, wanted, first, account);
    return file.write(order, account);
}

} // namespace

bool CMakeEditor::ConfigLinkerSettings(const ProjectOrder &order, BuilderAccount &account) const
{
    return configLinkerSizes(order, account);
}

bool CMakeEditor::ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const
{
    return Config_CMakeLists_One_Cmake(order, account) && Config_cmakefile_Cmake(order, first, account) &&
           Config_CMakeLists_Two_Cmake(order, first, account);
}

} // namespace ChipLoom
