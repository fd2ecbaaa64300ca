#include "files/FileName.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

TEST(FileName, TextIsUtf8) {
    EXPECT_EQ(fileNameBytes("/tmp/Größe \U0001F600.pdf"), QByteArray("/tmp/Gr\xC3\xB6\xC3\x9F"
                                                                     "e \xF0\x9F\x98\x80.pdf"));
    EXPECT_EQ(fileNameText("/tmp/Gr\xC3\xB6\xC3\x9F"
                           "e \xF0\x9F\x98\x80.pdf"),
              QString("/tmp/Größe \U0001F600.pdf"));
    EXPECT_EQ(fileNameBytes({}), QByteArray());
}

TEST(FileName, BytesThatAreNoCharacterComeBackAsTheyWere) {
    for (const char *name :
         {"caf\xE9.pdf", "\xFF\xFE", "a\xC3", "\xC3(", "\xE2\x82", "\xED\xA0\x80 surrogate",
          "\xED\xB3\xA9 an escape spelled out", "\xC0\xAF overlong", "\xF5\x80\x80\x80",
          "good \xC3\xA9 and bad \xE9 and \xF0\x9F\x98\x80"}) {
        const QString text = fileNameText(name);
        EXPECT_EQ(fileNameBytes(text), QByteArray(name)) << name;
        EXPECT_NE(text, QString::fromUtf8(name));
    }
    EXPECT_TRUE(fileNameText("good \xC3\xA9 and bad \xE9").startsWith("good é and bad "));
}

TEST(FileName, EveryByteHasAnEscape) {
    for (int byte = 1; byte < 256; ++byte) {
        const QByteArray name = QByteArray("x") + static_cast<char>(byte) + "y";
        EXPECT_EQ(fileNameBytes(fileNameText(name)), name) << byte;
    }
}

TEST(FileName, AddressesHaveAnyByte) {
    for (const char *name : {"/tmp/a b%20.pdf", "/tmp/\xC3\xA4.pdf", "/tmp/caf\xE9 100%.pdf"}) {
        const QUrl url = urlOfFile(fileNameText(name));
        EXPECT_TRUE(url.isLocalFile()) << name;
        EXPECT_EQ(fileNameBytes(pathOfFileUrl(url)), QByteArray(name));
        EXPECT_EQ(fileNameBytes(pathOfFileUrl(QUrl(QString::fromLatin1(url.toEncoded())))), QByteArray(name));
    }
    EXPECT_EQ(urlOfFile("/tmp/ä.pdf"), QUrl::fromLocalFile("/tmp/ä.pdf"));
}

TEST(FileName, ArgumentsHaveAnyByte) {
    const char *const argv[] = {"program", "-o", "caf\xE9.pdf", nullptr};
    EXPECT_EQ(argumentTexts(3, argv), (QStringList{"-o", fileNameText("caf\xE9.pdf")}));
}

}  // namespace
}  // namespace leafwright
