// NSAppleScript through the script engine adapter. macOS only.
#include <gtest/gtest.h>

#include <memory>
#include <variant>

#include "TolvaneMac/Adapters.h"

namespace tolvane::mac {
namespace {

TEST(AppleScriptEngineTest, CompilesAndRunsReturnOne) {
    const auto engine = makeScriptEngine();
    const auto script = engine->create("return 1");
    ASSERT_NE(script, nullptr);
    script->compile();
    const ScriptRunResult result = script->run();
    ASSERT_TRUE(std::holds_alternative<ScriptValue>(result));
    EXPECT_EQ(std::get<ScriptValue>(result).stringValue, "1");
}

TEST(AppleScriptEngineTest, ARuntimeErrorCarriesItsNumber) {
    const auto script = makeScriptEngine()->create("error number -1728");
    ASSERT_NE(script, nullptr);
    script->compile();
    const ScriptRunResult result = script->run();
    ASSERT_TRUE(std::holds_alternative<ScriptError>(result));
    EXPECT_EQ(std::get<ScriptError>(result).number, -1728);
}

}  // namespace
}  // namespace tolvane::mac
