#include "DatabaseFolder.h"
#include "Limits.h"
#include "QtPrinters.h"

using namespace ChipLoom;

namespace {

class KeyStore : public DatabaseFolder
{
protected:
    QString valueOf(const QString &key) const
    {
        QString value = "(none)";
        m_reader.GetConfigValueFromXml(m_file, key, value);
        return value;
    }

    const QString m_file = path("config.xml");
};

TEST_F(KeyStore, KeepsWhatWasStored)
{
    ASSERT_TRUE(m_reader.CreateXMLFile(m_file));
    EXPECT_EQ(contentOf("config.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Configuration/>\n");
    EXPECT_EQ(valueOf("Language"), "(none)");
    EXPECT_TRUE(m_reader.AppendConfigToXml(m_file, "Language", ""));
    EXPECT_TRUE(m_reader.AppendConfigToXml(m_file, "Language", "UI_CH"));
    EXPECT_TRUE(m_reader.AppendConfigToXml(m_file, "PackagePath", QStringLiteral("/home/a & <b>/项目")));
    EXPECT_EQ(valueOf("Language"), "UI_CH");
    EXPECT_EQ(valueOf("PackagePath"), QStringLiteral("/home/a & <b>/项目"));
    EXPECT_EQ(valueOf("language"), "(none)");
    EXPECT_EQ(contentOf("config.xml"), QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Configuration>\n"
                                                  "    <Language>UI_CH</Language>\n"
                                                  "    <PackagePath>/home/a &amp; &lt;b>/项目</PackagePath>\n"
                                                  "</Configuration>\n"));
}

TEST_F(KeyStore, KeepsWhatItDoesNotKnow)
{
    write("config.xml", "<?xml version='1.0' encoding='UTF-8'?>\n<!-- mine -->\n<Configuration note=\"x\">"
                        "<Other a=\"1\"><Sub/></Other><Theme><!-- why -->dark</Theme></Configuration>");
    EXPECT_EQ(valueOf("Theme"), "dark");
    ASSERT_TRUE(m_reader.AppendConfigToXml(m_file, "Theme", "light"));
    EXPECT_EQ(valueOf("Theme"), "light");
    const QByteArray content = contentOf("config.xml");
    for (const char *kept : {"<!-- mine -->", "<!-- why -->", "note=\"x\"", "<Other a=\"1\">", "<Sub/>"})
        EXPECT_TRUE(content.contains(kept)) << kept << " in " << content.toStdString();
}

TEST_F(KeyStore, WhatWouldSpoilTheFileIsRefused)
{
    ASSERT_TRUE(m_reader.CreateXMLFile(m_file));
    ASSERT_TRUE(m_reader.AppendConfigToXml(m_file, "Good", "1"));
    const QByteArray before = contentOf("config.xml");
    EXPECT_FALSE(m_reader.AppendConfigToXml(m_file, "not a name", "1"));
    EXPECT_FALSE(m_reader.AppendConfigToXml(m_file, "", "1"));
    EXPECT_FALSE(m_reader.AppendConfigToXml(m_file, "Good", QString("a") + QChar(1)));
    EXPECT_EQ(contentOf("config.xml"), before);

    write("config.xml", "<Configuration><Good>1</Good");
    EXPECT_FALSE(m_reader.AppendConfigToXml(m_file, "Good", "2"));
    EXPECT_EQ(contentOf("config.xml"), "<Configuration><Good>1</Good") << "a damaged file is left to its owner";
    EXPECT_EQ(valueOf("Good"), "(none)");
    EXPECT_FALSE(m_reader.AppendConfigToXml(path("missing.xml"), "Good", "2"));
    EXPECT_FALSE(QFile::exists(path("missing.xml")));
}

TEST_F(KeyStore, AnotherEncodingBecomesUtf8)
{
    const QString text =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-16\"?><Configuration><A>中</A></Configuration>");
    write("config.xml", "\xff\xfe" + QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2));
    EXPECT_TRUE(m_reader.AppendConfigToXml(m_file, "B", "2"));
    EXPECT_EQ(valueOf("A"), QStringLiteral("中"));
    EXPECT_EQ(valueOf("B"), "2");
}

TEST_F(KeyStore, AFailedWriteLosesNothing)
{
    ASSERT_TRUE(m_reader.CreateXMLFile(m_file));
    ASSERT_TRUE(m_reader.AppendConfigToXml(m_file, "Key", "old"));
    {
        const FullDisk disk(64);
        EXPECT_FALSE(m_reader.AppendConfigToXml(m_file, "Key", QString(1000, 'x')));
    }
    EXPECT_EQ(valueOf("Key"), "old");

    const AsOrdinaryUser user(m_folder.path());
    const QString own = path("own.xml");
    ASSERT_TRUE(m_reader.CreateXMLFile(own));
    ASSERT_TRUE(QFile::setPermissions(own, QFile::ReadOwner));
    EXPECT_FALSE(m_reader.AppendConfigToXml(own, "Key", "new"));
}

} // namespace
