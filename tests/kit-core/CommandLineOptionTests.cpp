#include "OrvikKitCore/CommandLineOption.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvik {
namespace {

using Arguments = std::vector<std::string>;

TEST(CommandLineOption, ValueIsTheArgumentAfterTheOption) {
    const Arguments arguments{"/Applications/Tolvane.app/Contents/MacOS/Tolvane", "--snapshot", "/tmp/shots"};
    EXPECT_EQ(CommandLineOption::value("--snapshot", arguments), "/tmp/shots");
}

TEST(CommandLineOption, FirstOccurrenceWinsLaterOnesAreIgnored) {
    const Arguments arguments{"tolvane", "--snapshot", "a", "--snapshot", "b"};
    EXPECT_EQ(CommandLineOption::value("--snapshot", arguments), "a");
}

TEST(CommandLineOption, OptionAsLastArgumentYieldsNothing) {
    const Arguments arguments{"tolvane", "--snapshot"};
    EXPECT_EQ(CommandLineOption::value("--snapshot", arguments), std::nullopt);
}

TEST(CommandLineOption, AbsentOptionYieldsNothing) {
    const Arguments arguments{"tolvane", "-NSDocumentRevisionsDebugMode", "YES"};
    EXPECT_EQ(CommandLineOption::value("--snapshot", arguments), std::nullopt);
    EXPECT_EQ(CommandLineOption::value("--snapshot", Arguments{}), std::nullopt);
}

TEST(CommandLineOption, ComparisonIsExact) {
    const Arguments arguments{"tolvane", "--Snapshot", "x", "--snapshot=y", "z", "--snapshots", "w"};
    EXPECT_EQ(CommandLineOption::value("--snapshot", arguments), std::nullopt);
}

TEST(CommandLineOption, ValueMayItselfLookLikeAnOptionOrBeEmpty) {
    EXPECT_EQ(CommandLineOption::value("--snapshot", Arguments{"t", "--snapshot", "--snapshot"}), "--snapshot");
    EXPECT_EQ(CommandLineOption::value("--snapshot", Arguments{"t", "--snapshot", ""}), "");
}

}  // namespace
}  // namespace orvik
