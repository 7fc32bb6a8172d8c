#include "ProjectFacts.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace ChipLoom::Test {

namespace {

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QString only(const QString &text, const QString &expression)
{
    const QRegularExpressionMatch match = QRegularExpression(expression).match(text);
    EXPECT_TRUE(match.hasMatch()) << expression.toStdString();
    return match.captured(1);
}

quint32 number(const QString &text)
{
    bool ok = false;
    const quint32 value = text.endsWith('K') ? text.chopped(1).toUInt(&ok, 0) * 1024 : text.toUInt(&ok, 0);
    EXPECT_TRUE(ok) << text.toStdString();
    return value;
}

/// Relative to the root of the project, from a path relative to `folder`.
QString fromFolder(const ProjectOrder &order, const QString &folder, QString path)
{
    path.replace('\\', '/');
    return QDir(order.projectFullPath).relativeFilePath(QDir::cleanPath(folder + '/' + path));
}

QDomElement document(const QString &path, QDomDocument &dom)
{
    QString error;
    EXPECT_TRUE(dom.setContent(fileBytes(path), &error)) << path.toStdString() << ": " << error.toStdString();
    return dom.documentElement();
}

QString first(const QDomElement &root, const QString &name)
{
    return root.elementsByTagName(name).at(0).toElement().text();
}

QDomElement named(const QDomElement &root, const QString &tag, const QString &name)
{
    const QDomNodeList found = root.elementsByTagName(tag);
    for (int i = 0; i < found.size(); ++i) {
        if (found.at(i).firstChildElement("name").text() == name)
            return found.at(i).toElement();
    }
    ADD_FAILURE() << name.toStdString();
    return {};
}

void readLinkerScript(const ProjectOrder &order, ProjectFacts &facts)
{
    const QString text = fileBytes(order.projectFullPath + '/' + order.linkerFile());
    facts.flashOrigin = number(only(text, "FLASH[^:]*: ORIGIN = (\\w+)"));
    facts.flashSize = number(only(text, "FLASH[^:]*:[^\\n]*LENGTH = (\\w+)"));
    facts.ramOrigin = number(only(text, "RAM[^:]*: ORIGIN = (\\w+)"));
    facts.ramSize = number(only(text, "RAM[^:]*:[^\\n]*LENGTH = (\\w+)"));
    facts.stack = number(only(text, "_Min_Stack_Size = (\\w+);"));
    facts.heap = number(only(text, "_Min_Heap_Size = (\\w+);"));
}

ProjectFacts mdkFacts(const ProjectOrder &order)
{
    ProjectFacts facts;
    QDomDocument dom;
    const QString suffix = order.ideType == IDE_MDK_V5 ? ".uvprojx" : ".uvproj";
    const QDomElement root = document(order.toolchainDir() + '/' + order.projectName + suffix, dom);
    facts.device = first(root, "Device");
    const auto area = [&](const QString &name, quint32 &origin, quint32 &size) {
        const QDomElement one = root.elementsByTagName(name).at(0).toElement();
        origin = number(one.firstChildElement("StartAddress").text());
        size = number(one.firstChildElement("Size").text());
    };
    quint32 chipOrigin = 0;
    quint32 chipSize = 0;
    area("OCR_RVCT4", facts.flashOrigin, facts.flashSize);
    area("IROM", chipOrigin, chipSize);
    EXPECT_EQ(chipSize, facts.flashSize);
    area("OCR_RVCT9", facts.ramOrigin, facts.ramSize);
    area("IRAM", chipOrigin, chipSize);
    EXPECT_EQ(chipSize, facts.ramSize);
    const QString separator = order.ideType == IDE_MDK_V5 ? "," : "-";
    EXPECT_EQ(number(only(first(root, "Cpu"), "IROM\\(0x[0-9a-fA-F]{8}" + separator + "(\\w+)")), facts.flashSize);
    EXPECT_EQ(number(only(first(root, "Cpu"), "IRAM\\(0x[0-9a-fA-F]{8}" + separator + "(\\w+)")), facts.ramSize);
    if (order.ideType == IDE_MDK_V5) {
        EXPECT_TRUE(first(root, "SFDFile").endsWith('\\' + order.series + ".svd"));
        EXPECT_TRUE(first(root, "PackID").contains('.' + order.series + "_DFP."));
    }
    facts.fpu = first(root, "Cpu").contains(" FPU2");
    EXPECT_EQ(first(root, "RvdsVP"), facts.fpu ? "2" : "0");
    EXPECT_EQ(first(root, "AdsCpuType"), '"' + only(first(root, "Cpu"), "CPUTYPE\\(\"([^\"]+)\"\\)") + '"');
    EXPECT_EQ(only(first(root, "FlashDriverDll"), "-FL0(\\w+)").toUInt(nullptr, 16), facts.flashSize);
    EXPECT_EQ(only(first(root, "FlashDriverDll"), "Device:([^$]*)"), facts.device);
    const QString startup = fileBytes(order.projectFullPath + '/' + order.startupFile());
    facts.stack = number(only(startup, "Stack_Size\\s+EQU\\s+(\\w+)"));
    facts.heap = number(only(startup, "Heap_Size\\s+EQU\\s+(\\w+)"));
    const QDomElement controls = root.elementsByTagName("Cads").at(0).firstChildElement("VariousControls");
    facts.defines = controls.firstChildElement("Define").text().split(", ");
    for (const QString &path : controls.firstChildElement("IncludePath").text().split(';'))
        facts.includes.append(fromFolder(order, order.toolchainDir(), path));
    const QDomNodeList files = root.elementsByTagName("FilePath");
    for (int i = 0; i < files.size(); ++i)
        facts.sources.append(fromFolder(order, order.toolchainDir(), files.at(i).toElement().text()));

    QDomDocument options;
    const QString name = order.toolchainDir() + '/' + order.projectName;
    const QDomElement target = document(name + (order.ideType == IDE_MDK_V5 ? ".uvoptx" : ".uvopt"), options);
    const QDomNodeList entries = target.elementsByTagName("SetRegEntry");
    EXPECT_EQ(entries.size(), 3);
    for (int i = 0; i < entries.size(); ++i) {
        const QString text = entries.at(i).firstChildElement("Name").text();
        EXPECT_EQ(only(text, "-FL0(\\w+)").toUInt(nullptr, 16), facts.flashSize);
        EXPECT_EQ(only(text, "Device:([^$]*)"), facts.device);
    }
    return facts;
}

ProjectFacts iarFacts(const ProjectOrder &order)
{
    ProjectFacts facts;
    QDomDocument dom;
    const QString name = order.toolchainDir() + '/' + order.projectName;
    const QDomElement root = document(name + ".ewp", dom);
    facts.device =
        only(named(root, "option", "OGChipSelectEditMenu").firstChildElement("state").text(), "ZevtraTek -(\\w+)");
    EXPECT_EQ(named(root, "option", "GFPUDeviceSlave").firstChildElement("state").text().section('_', 0, 0),
              facts.device);
    const QString icf = named(root, "option", "IlinkIcfFile").firstChildElement("state").text().mid(11);
    EXPECT_EQ(fromFolder(order, order.toolchainDir(), icf), order.linkerFile());
    const auto states = [&](const QString &option) {
        QStringList found;
        const QDomElement element = named(root, "option", option);
        for (auto one = element.firstChildElement("state"); !one.isNull(); one = one.nextSiblingElement("state"))
            found.append(one.text());
        return found;
    };
    facts.defines = states("CCDefines");
    facts.fpu = states("FPU2") == QStringList("6");
    for (const QString &path : states("CCIncludePath2"))
        facts.includes.append(fromFolder(order, order.toolchainDir(), path.mid(11)));
    const QDomNodeList files = root.elementsByTagName("file");
    for (int i = 0; i < files.size(); ++i)
        facts.sources.append(
            fromFolder(order, order.toolchainDir(), files.at(i).firstChildElement("name").text().mid(11)));

    const QString text = fileBytes(order.projectFullPath + '/' + order.linkerFile());
    facts.flashOrigin = number(only(text, "region_ROM_start__ = (\\w+)"));
    facts.flashSize = number(only(text, "region_ROM_end__ *= (\\w+)")) - facts.flashOrigin + 1;
    facts.ramOrigin = number(only(text, "region_RAM_start__ = (\\w+)"));
    facts.ramSize = number(only(text, "region_RAM_end__ *= (\\w+)")) - facts.ramOrigin + 1;
    facts.stack = number(only(text, "size_cstack__\\s*= (\\w+);"));
    facts.heap = number(only(text, "size_heap__\\s*= (\\w+);"));

    QDomDocument debugger;
    const QDomElement options = document(name + ".ewd", debugger);
    EXPECT_EQ(only(named(options, "option", "MemFile").text(), "\\\\(\\w+)\\.ddf"), facts.device);
    EXPECT_EQ(only(named(options, "option", "FlashLoadersV3").text(), "Flash(\\w+)\\.board"), facts.device);
    QDomDocument rest;
    EXPECT_EQ(first(document(name + ".eww", rest), "path"), "$WS_DIR$\\" + order.projectName + ".ewp");
    document(name + ".ewt", rest);
    return facts;
}

ProjectFacts eclipseFacts(const ProjectOrder &order)
{
    ProjectFacts facts;
    readLinkerScript(order, facts);
    QDomDocument dom;
    const QDomElement root = document(order.toolchainDir() + "/.cproject", dom);
    const QDomNodeList options = root.elementsByTagName("option");
    int scripts = 0;
    for (int i = 0; i < options.size(); ++i) {
        const QDomElement option = options.at(i).toElement();
        QStringList values;
        for (auto one = option.firstChildElement(); !one.isNull(); one = one.nextSiblingElement())
            values.append(one.attribute("value"));
        const QString kind = option.attribute("superClass").section("cross.option.", 1);
        if (kind == "c.compiler.defs")
            facts.defines = values;
        if (kind.endsWith("linker.scriptfile")) {
            ++scripts;
            EXPECT_EQ(values,
                      QStringList("\"${workspace_loc:/${ProjName}}/ldscripts/" + order.linkerName() + "_FLASH.ld\""));
        }
        if (kind == "c.compiler.include.paths") {
            facts.includes.clear();
            for (const QString &value : values)
                facts.includes.append(
                    fromFolder(order, order.toolchainDir() + "/Debug", value.mid(1, value.size() - 2)));
        }
    }
    EXPECT_EQ(scripts, 4);
    facts.fpu = fileBytes(order.toolchainDir() + "/.cproject").contains("arm.target.fpu.abi.hard");
    facts.device = facts.defines.value(0);
    QDomDocument project;
    const QDomElement description = document(order.toolchainDir() + "/.project", project);
    EXPECT_EQ(description.firstChildElement("name").text(), order.projectName);
    const QDomNodeList links = description.elementsByTagName("link");
    for (int i = 0; i < links.size(); ++i) {
        if (links.at(i).firstChildElement("type").text() != "1")
            continue;
        const QString uri = links.at(i).firstChildElement("locationURI").text();
        const QString up = uri.startsWith("PARENT-1-") ? "../" : "../../";
        facts.sources.append(fromFolder(order, order.toolchainDir(), up + uri.section('/', 1)));
    }
    if (order.ideType == IDE_ZV32_IDE) {
        EXPECT_TRUE(fileBytes(order.toolchainDir() + "/preferences.ini")
                        .contains(("chipSeries=" + order.series + "\nchipTarget=" + order.device + '\n').toUtf8()));
    }
    return facts;
}

QStringList sectionOf(const QString &text, const QString &begin, const QString &end, const QString &prefix)
{
    QStringList entries;
    const QString body = text.section(begin, 1).section(end, 0, 0);
    for (QString line : body.split('\n')) {
        line = line.remove('\\').trimmed();
        if (line.startsWith(prefix) && !line.isEmpty())
            entries.append(line.mid(prefix.size()));
    }
    return entries;
}

ProjectFacts textFacts(const ProjectOrder &order)
{
    ProjectFacts facts;
    readLinkerScript(order, facts);
    if (order.ideType == IDE_MAKEFILE) {
        const QString text = fileBytes(order.projectFullPath + "/Makefile");
        facts.sources = sectionOf(text, "C_SOURCES = ", "#", "") + sectionOf(text, "ASM_SOURCES = ", "#", "");
        facts.includes = sectionOf(text, "C_INCLUDES = ", "#", "-I");
        facts.defines = sectionOf(text, "C_DEFS = ", "#", "-D");
        EXPECT_EQ(only(text, "LDSCRIPT = (.*)"), order.linkerFile());
        facts.fpu = text.contains("-mfloat-abi=hard");
    } else {
        const QString text = fileBytes(order.projectFullPath + "/cmake/zv32_chiploom/CMakeLists.txt");
        const QRegularExpression list("set\\((\\w+)_Src\\n");
        QRegularExpressionMatchIterator lists = list.globalMatch(text);
        while (lists.hasNext())
            facts.sources += sectionOf(text, lists.next().captured(), ")", "${CMAKE_SOURCE_DIR}/");
        facts.includes = sectionOf(text, "set(LM_Include_Dirs\n", ")", "${CMAKE_SOURCE_DIR}/");
        facts.defines = sectionOf(text, "set(LM_Defines_Syms\n", "$<$", "");
        const QByteArray toolchain = fileBytes(order.projectFullPath + "/cmake/gcc-arm-none-eabi.cmake");
        EXPECT_TRUE(toolchain.contains(("{CMAKE_SOURCE_DIR}/" + order.linkerFile()).toUtf8()));
        facts.fpu = toolchain.contains("-mfloat-abi=hard");
    }
    facts.device = facts.defines.filter("ZV32").value(0);
    return facts;
}

} // namespace

ProjectFacts readFacts(const ProjectOrder &order)
{
    ProjectFacts facts = order.isMdk()        ? mdkFacts(order)
                         : order.isIar()      ? iarFacts(order)
                         : order.isTextForm() ? textFacts(order)
                                              : eclipseFacts(order);
    for (QStringList *list : {&facts.defines, &facts.includes, &facts.sources})
        list->sort();
    return facts;
}

} // namespace ChipLoom::Test
