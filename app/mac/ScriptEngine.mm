// ScriptEngine over NSAppleScript.
#import <Foundation/Foundation.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#import "OrvikKitMac/PropertyLists.h"
#import "OrvikKitMac/Strings.h"
#include "TolvaneMac/Adapters.h"

namespace tolvane::mac {

namespace {

class AppleScript final : public ScriptEngine::Script {
public:
    explicit AppleScript(NSAppleScript* script) : script_(script) {}

    void compile() override {
        NSDictionary<NSString*, id>* error = nil;
        [script_ compileAndReturnError:&error];
    }

    ScriptRunResult run() override {
        NSDictionary<NSString*, id>* error = nil;
        NSAppleEventDescriptor* result = [script_ executeAndReturnError:&error];
        if (result == nil) {
            // The error number read as an integer, when it is one.
            const std::optional<orvik::PropertyListValue> number =
                error == nil ? std::nullopt : orvik::mac::propertyListValue([error objectForKey:NSAppleScriptErrorNumber]);
            const std::int64_t* integer = number ? number->integer() : nullptr;
            return ScriptError{.number = integer != nullptr ? std::optional<std::int64_t>(*integer) : std::nullopt};
        }
        NSData* data = result.data;
        const auto* bytes = static_cast<const std::uint8_t*>(data.bytes);
        return ScriptValue{.stringValue = orvik::mac::portableString(result.stringValue),
                           .data = std::vector<std::uint8_t>(bytes, bytes + data.length)};
    }

private:
    NSAppleScript* script_;
};

class AppleScriptEngine final : public ScriptEngine {
public:
    std::unique_ptr<Script> create(std::string_view source) override {
        NSString* text = orvik::mac::platformString(source);
        if (text == nil) return nullptr;
        NSAppleScript* script = [[NSAppleScript alloc] initWithSource:text];
        if (script == nil) return nullptr;
        return std::make_unique<AppleScript>(script);
    }
};

}  // namespace

std::shared_ptr<ScriptEngine> makeScriptEngine() { return std::make_shared<AppleScriptEngine>(); }

}  // namespace tolvane::mac
