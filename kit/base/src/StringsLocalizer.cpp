#include "OrvikKit/StringsLocalizer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <system_error>
#include <utility>

#include "OrvikKitCore/FormatSpecifiers.h"
#include "OrvikKitCore/PluralRules.h"

namespace orvik {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view folderSuffix = ".lproj";

std::optional<std::string> readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::ostringstream contents;
    contents << file.rdbuf();
    if (file.bad()) return std::nullopt;
    return contents.str();
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || text.empty()) return std::nullopt;
    return value;
}

}  // namespace

StringsLocalizer::StringsLocalizer(std::vector<fs::path> resourceFolders, std::string_view language)
    : language_(preferredLocalization(languagesIn(resourceFolders), {std::string(language)})) {
    chain_.push_back(Tables{.language = language_, .strings = {}, .plurals = {}});
    if (language_ != developmentLanguage) {
        chain_.push_back(Tables{.language = std::string(developmentLanguage), .strings = {}, .plurals = {}});
    }
    for (Tables& tables : chain_) load(tables, resourceFolders);
}

void StringsLocalizer::load(Tables& tables, const std::vector<fs::path>& resourceFolders) {
    for (const fs::path& folder : resourceFolders) {
        const fs::path languageFolder = folder / (tables.language + std::string(folderSuffix));
        std::error_code error;
        if (!fs::is_directory(languageFolder, error)) continue;
        std::vector<fs::path> files;
        for (fs::directory_iterator item(languageFolder, error), end; !error && item != end; item.increment(error)) {
            files.push_back(item->path());
        }
        std::sort(files.begin(), files.end());
        for (const fs::path& file : files) {
            const std::string extension = file.extension().string();
            if (extension != ".strings" && extension != ".stringsdict") continue;
            const std::string table = file.stem().string();
            const std::string name = languageFolder.filename().string() + "/" + file.filename().string();
            const std::optional<std::string> bytes = readFile(file);
            if (!bytes) {
                problems_.push_back(name + ": cannot be read");
                continue;
            }
            if (extension == ".strings") {
                const StringsTable parsed = parseStringsTable(*bytes);
                if (parsed.error) {
                    problems_.push_back(name + ": " + parsed.error->description());
                    continue;
                }
                auto& entries = tables.strings[table];
                for (const StringsEntry& entry : parsed.entries) entries.insert_or_assign(entry.key, entry.value);
            } else {
                const StringsDictionary parsed = parseStringsDictionary(*bytes);
                if (parsed.error) {
                    problems_.push_back(name + ": " + parsed.error->description());
                    continue;
                }
                auto& entries = tables.plurals[table];
                for (const StringsDictionaryEntry& entry : parsed.entries) entries.insert_or_assign(entry.key, entry);
            }
        }
    }
}

std::string StringsLocalizer::localized(const LocalizedText& text) const {
    const std::string_view table = text.table ? std::string_view(*text.table) : mainTable;
    for (const Tables& tables : chain_) {
        if (const auto plurals = tables.plurals.find(table); plurals != tables.plurals.end()) {
            if (const auto entry = plurals->second.find(text.key); entry != plurals->second.end()) {
                return text.filledIn(pluralFormat(entry->second, tables.language, text.arguments));
            }
        }
        if (const auto strings = tables.strings.find(table); strings != tables.strings.end()) {
            if (const auto value = strings->second.find(text.key); value != strings->second.end()) {
                return text.filledIn(value->second);
            }
        }
    }
    return text.untranslated();
}

std::string StringsLocalizer::pluralFormat(const StringsDictionaryEntry& entry, std::string_view language,
                                           const std::vector<std::string>& arguments) {
    const FormatParse parse = parseFormat(entry.format);
    std::string format;
    std::size_t copied = 0;
    for (const FormatSpecifier& specifier : parse.specifiers) {
        if (!specifier.variable) continue;
        const auto variable = entry.variables.find(*specifier.variable);
        if (variable == entry.variables.end()) continue;
        const auto argument = static_cast<std::size_t>(specifier.argument);
        std::optional<std::int64_t> number;
        if (argument >= 1 && argument <= arguments.size()) number = wholeNumber(arguments[argument - 1]);
        PluralCategory category = PluralCategory::other;
        if (number) category = pluralCategory(language, *number).value_or(PluralCategory::other);
        const auto& forms = variable->second.forms;
        auto form = forms.find(number == 0 && forms.contains(PluralCategory::zero) ? PluralCategory::zero : category);
        if (form == forms.end()) form = forms.find(PluralCategory::other);
        format.append(entry.format, copied, specifier.offset - copied);
        if (form != forms.end()) format += form->second;
        copied = specifier.offset + specifier.text.size();
    }
    format.append(entry.format, copied);
    return format;
}

std::vector<std::string> StringsLocalizer::languagesIn(const std::vector<fs::path>& resourceFolders) {
    std::set<std::string> languages;
    for (const fs::path& folder : resourceFolders) {
        std::error_code error;
        for (fs::directory_iterator item(folder, error), end; !error && item != end; item.increment(error)) {
            const std::string name = item->path().filename().string();
            std::error_code typeError;
            if (name.size() > folderSuffix.size() && name.ends_with(folderSuffix) && item->is_directory(typeError)) {
                languages.insert(name.substr(0, name.size() - folderSuffix.size()));
            }
        }
    }
    return {languages.begin(), languages.end()};
}

std::string StringsLocalizer::preferredLocalization(const std::vector<std::string>& available,
                                                    const std::vector<std::string>& preferred) {
    const auto has = [&](std::string_view language) {
        return std::find(available.begin(), available.end(), language) != available.end();
    };
    for (const std::string& language : preferred) {
        std::string candidate = language;
        std::replace(candidate.begin(), candidate.end(), '_', '-');
        while (!candidate.empty()) {
            if (has(candidate)) return candidate;
            const std::size_t cut = candidate.rfind('-');
            if (cut == std::string::npos) break;
            candidate.resize(cut);
        }
    }
    return std::string(developmentLanguage);
}

std::vector<std::string> StringsLocalizer::languagesArgument(std::string_view value) {
    const auto trimmed = [](std::string_view text) {
        while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
        while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
        return text;
    };
    const auto isLanguage = [](std::string_view text) {
        return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
        });
    };
    value = trimmed(value);
    std::vector<std::string> languages;
    if (!(value.starts_with('(') && value.ends_with(')'))) {
        if (isLanguage(value)) languages.emplace_back(value);
        return languages;
    }
    value = value.substr(1, value.size() - 2);
    while (!trimmed(value).empty()) {
        const std::size_t comma = value.find(',');
        std::string_view item = trimmed(value.substr(0, comma));
        if (item.size() >= 2 && item.front() == '"' && item.back() == '"') item = item.substr(1, item.size() - 2);
        if (!isLanguage(item)) return {};
        languages.emplace_back(item);
        if (comma == std::string_view::npos) break;
        value.remove_prefix(comma + 1);
    }
    return languages;
}

}  // namespace orvik
