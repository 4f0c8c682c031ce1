#include "desktop/platform/Text.h"

#include <QTextDocument>

#include <gtest/gtest.h>

namespace tallybook::desktop {
namespace {

TEST(Text, everyByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(toQt(all).size(), 256);
    EXPECT_EQ(fromQt(toQt(all)), all);
}

TEST(Text, composesBeforeItLooksForAByte) {
    EXPECT_EQ(fromQt(QStringLiteral("e\u0301")), "\xE9");
}

TEST(Text, takesTheBestFitOrAQuestionMark) {
    EXPECT_EQ(fromQt(QStringLiteral("\u0141\u20AC\u65E5")), "L\x80?");
    EXPECT_EQ(fromQt(QString::fromUcs4(U"\U0001F600")), "?");
}

TEST(Text, pathsKeepTheirBytes) {
    const std::filesystem::path path("/tmp/B\xC3\xBC"
                                     "cher");
    EXPECT_EQ(pathToQt(path), QStringLiteral("/tmp/B\u00FCcher"));
    EXPECT_EQ(pathFromQt(pathToQt(path)), path);
}

TEST(PlainTip, showsWhatLooksLikeHtmlAsItStands) {
    EXPECT_EQ(plainTip(QStringLiteral("Salt & pepper")), QStringLiteral("Salt & pepper"));
    QTextDocument shown;
    shown.setHtml(plainTip(QStringLiteral("<b>x</b>")));
    EXPECT_EQ(shown.toPlainText(), QStringLiteral("<b>x</b>"));
}

} // namespace
} // namespace tallybook::desktop
