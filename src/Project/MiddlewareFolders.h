#pragma once

#include "Project/PackageListing.h"
#include "Project/ProjectOrder.h"

namespace ChipLoom {

/// Lists the folders that the middlewares of a project bring along. `components` is the repository of the components
/// that come without the firmware package. False, with the listing's error, if one is missing.
bool listMiddlewareFolders(const ProjectOrder &order, PackageListing &package, PackageListing &components);

/// Whether a path, relative to the root of a project, lies in a folder that a middleware brings along.
bool isOfMiddleware(const QString &path);

/// Where a file of a middleware lies in the package: "lwip/port/ethernetif.c" stands below "middlewares/3rd_party".
QString middlewareFilePath(const MiddlewaresCopyFile &file);

/// The version folder of RT-Thread Nano in the repository of components, relative to it; empty if there is none.
QString rtThreadFolder(const PackageListing &components);

} // namespace ChipLoom
