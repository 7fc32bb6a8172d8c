#include "Project/MiddlewareFolders.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

struct MiddlewareRow
{
    const char *name;
    const char *folder;      ///< below "middlewares"; a last part with "*" takes each folder that matches
    const char *keep = "";   ///< file of it that the project configures: one that stands there stays
    const char *target = ""; ///< name in the project; empty for that of the package
};

constexpr std::array<MiddlewareRow, 8> Rows{{
    {"FREERTOS", "freertos"},
    {"I2C_Application", "i2c_application*"},
    {"LWIP", "3rd_party/lwip*", "", "lwip"}, // versions are told by the name of the folder
    {"USB_DEVICE", "usb*driver*"},
    {"USB_DEVICE", "usbd_class"},
    {"USB_HOST", "usb*driver*"},
    {"USB_HOST", "usbh_class"},
    {"FATFS", "fatfs", "source/ffconf.h"},
}};

const QString Middlewares = QStringLiteral("middlewares/");

/// Lists a folder but for one file of it, which is listed as one that stays.
bool listConfigured(PackageListing &package, const QString &from, const QString &to, const QString &keep)
{
    if (!package.copyDirectory(from, to))
        return false;
    if (keep.isEmpty() || !package.hasFile(from + QLatin1Char('/') + keep))
        return true;
    package.keepExisting(to + QLatin1Char('/') + keep);
    return true;
}

bool listRow(const MiddlewareRow &row, PackageListing &package)
{
    const QString pattern = Middlewares + QLatin1String(row.folder);
    const int slash = pattern.lastIndexOf(QLatin1Char('/'));
    const QString above = pattern.left(slash);
    const QStringList names = package.folderNames(above, pattern.mid(slash + 1));
    if (names.isEmpty())
        return package.copyDirectory(pattern, pattern); // which says that it is missing
    for (const QString &name : names) {
        const QString target = *row.target != '\0' ? QLatin1String(row.target) : name;
        if (!listConfigured(package, above + QLatin1Char('/') + name, above + QLatin1Char('/') + target,
                            QLatin1String(row.keep)))
            return false;
        if (*row.target != '\0')
            return true;
    }
    return true;
}

} // namespace

bool listMiddlewareFolders(const ProjectOrder &order, PackageListing &package, PackageListing &components)
{
    // The DSP part of CMSIS comes with the libraries.
    for (const MiddlewareRow &row : Rows) {
        if (order.usesMiddleware(QLatin1String(row.name)) && !listRow(row, package))
            return false;
    }
    if (!order.usesMiddleware(QStringLiteral("RT-Thread_Nano")))
        return true;
    const QString folder = rtThreadFolder(components);
    const QString target = Middlewares + QLatin1String("rt-thread");
    if (!listConfigured(components, folder.isEmpty() ? QStringLiteral("LM_RT-Thread_Nano") : folder, target,
                        QStringLiteral("include/rtdef.h")))
        return false;
    // The compilers of a project take ".S" and ".s" for two kinds of file.
    for (const char *core : {"cortex-m0", "cortex-m4"}) {
        const QString file =
            target + QLatin1String("/libcpu/arm/") + QLatin1String(core) + QLatin1String("/context_gcc");
        components.rename(file + QLatin1String(".S"), file + QLatin1String(".s"));
    }
    return true;
}

bool isOfMiddleware(const QString &path)
{
    const auto liesIn = [&path](const QString &folder) { return path.startsWith(Middlewares + folder); };
    return liesIn(QStringLiteral("rt-thread")) || std::any_of(Rows.begin(), Rows.end(), [&](const MiddlewareRow &row) {
               return liesIn(QString::fromLatin1(row.folder).section(QLatin1Char('*'), 0, 0));
           });
}

QString middlewareFilePath(const MiddlewaresCopyFile &file)
{
    QString folder = file.SrcDir;
    folder.replace(QLatin1Char('\\'), QLatin1Char('/'));
    while (folder.startsWith(QLatin1Char('/')))
        folder.remove(0, 1);
    if (folder.startsWith(QLatin1String("lwip")))
        folder.prepend(Middlewares + QLatin1String("3rd_party/"));
    return folder + QLatin1Char('/') + file.FileName;
}

QString rtThreadFolder(const PackageListing &components)
{
    const QString above = QStringLiteral("LM_RT-Thread_Nano");
    const QStringList versions = components.folderNames(above, QStringLiteral("RT-Thread_Nano_V*"));
    for (auto version = versions.rbegin(); version != versions.rend(); ++version) {
        const QString folder = above + QLatin1Char('/') + *version + QLatin1String("/rt-thread");
        if (components.hasFolder(folder))
            return folder;
    }
    return {};
}

} // namespace ChipLoom
