#include "Model/PeripheralTree.h"
#include "Model/RecentDesigns.h"
#include "Model/XmlTree.h"
#include "Model/xmloperation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

using namespace ChipLoom;

namespace {

// What must hold for any input whatever.
void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "broken promise: %s\n", what);
    std::abort();
}

int depthOf(const XMLElementInfo &element)
{
    int depth = 0;
    for (const XMLElementInfo &child : element.subElementInfoList)
        depth = std::max(depth, depthOf(child));
    return depth + 1;
}

bool same(const XMLElementInfo &a, const XMLElementInfo &b)
{
    if (a.tagName != b.tagName || a.attributeInfoList != b.attributeInfoList ||
        a.subElementInfoList.size() != b.subElementInfoList.size())
        return false;
    for (int i = 0; i < a.subElementInfoList.size(); ++i) {
        if (!same(a.subElementInfoList.at(i), b.subElementInfoList.at(i)))
            return false;
    }
    return true;
}

void tryTree(const QByteArray &content)
{
    const XmlDocument sole = parseXml(content);
    const XmlDocument all = parseXml(content, XmlText::All);
    require(sole.problem.fault == all.problem.fault, "the text rule decides about nothing but texts");
    require(same(sole.root, all.root), "the text rule leaves the tree alone");
    if (sole.problem) {
        require(sole.root.tagName.isEmpty() && sole.root.subElementInfoList.isEmpty(), "a faulty file gives nothing");
        return;
    }
    require(depthOf(sole.root) <= XmlLimits().depth, "no tree is deeper than the limit");

    const PeripheralTree indexed(sole.root);
    const XMLElementInfo &root = indexed.root();
    for (const char *instance : {"TMR1", "XMC1", "add"}) {
        XMLOperation::GetModeSettings(instance, root);
        XMLOperation::GetModeSignals(instance, root);
        for (const RefParameter &parameter : XMLOperation::GetXMLFileAllRefParameterList(instance, root)) {
            require(indexed.GetRefParameterList(instance, parameter.Name).size() ==
                        XMLOperation::GetRefParameterList(instance, parameter.Name, root).size(),
                    "the index finds what the walk finds");
        }
    }
    XMLOperation::GetParameterTabNameList(root);
    require(indexed.GetRefMode_Abstract().Name == XMLOperation::GetRefMode_Abstract(root).Name, "one abstract mode");
}

void tryFile(const QString &file, const XMLOperation &reader)
{
    const bool listed = !reader.catalogueProblem();
    require(!listed || !reader.GetProductLinesList().isEmpty(), "a catalogue without a problem lists something");
    reader.GetMCUSerialsList();
    reader.GetMCUPackageList();
    for (const MCUPinsBaseInfo &pin : reader.GetDeviceFile(file).PinsList)
        require(pin.validFlag == !pin.Variant.startsWith(QLatin1String("PINREMAP")) || pin.Variant.size() > 8,
                "a remapped pin begins invalid");
    reader.GetMainAllFuncNameForRank(file, QStringLiteral("MainFuncNameList"));
    QList<XMLAttributeInfo> modes, params, interrupts;
    reader.GetModeAndParamValue(file, QStringLiteral("USART1"), modes, params, interrupts);
    require(GetRecentlyProjectList(file).size() <= 5, "at most five recent designs");

    const QString value = QStringLiteral("UI_CH");
    if (reader.AppendConfigToXml(file, QStringLiteral("Language"), value)) {
        QString stored;
        require(reader.GetConfigValueFromXml(file, QStringLiteral("Language"), stored) && stored == value,
                "what was stored is read back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // In memory: the reader takes files, and a disk would be the slowest part.
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/ReaderFuzz"));
    static const XMLOperation reader(AppPaths(folder.path(), folder.path()));
    static const QString file = reader.mcuListFile();
    QDir().mkpath(reader.paths().databaseDir());

    const QByteArray content(reinterpret_cast<const char *>(data), static_cast<int>(size));
    tryTree(content);
    QFile out(file);
    require(out.open(QIODevice::WriteOnly) && out.write(content) == content.size(), "room in /dev/shm");
    out.close();
    tryFile(file, reader);
    return 0;
}
