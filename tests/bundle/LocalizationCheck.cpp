#include "LocalizationCheck.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <system_error>
#include <utility>

#include "BundleFiles.h"
#include "OrvikKit/StringsLocalizer.h"
#include "OrvikKitCore/FormatSpecifiers.h"
#include "OrvikKitCore/PluralRules.h"
#include "OrvikKitCore/StringsTable.h"

namespace bundlefiles {

namespace {

namespace fs = std::filesystem;
using Kind = LocalizationProblem::Kind;
using orvik::PluralCategory;

constexpr const char* development = "en";
constexpr const char* infoPlistTable = "InfoPlist";

struct LanguageFolder {
    std::map<std::string, std::vector<orvik::StringsEntry>> strings;                // by table
    std::map<std::string, std::vector<orvik::StringsDictionaryEntry>> dictionaries;  // by table
    std::vector<std::pair<std::string, fs::path>> files;                             // name, path
};

class Checker {
public:
    explicit Checker(const LocalizationSources& sources) : sources_(sources) {}

    std::vector<LocalizationProblem> run() {
        languages_ = orvik::StringsLocalizer::languagesIn(sources_.resourceFolders);
        for (const std::string& language : languages_) folders_[language] = load(language);
        if (!folders_.contains(development)) {
            add(Kind::keys, development, "there is no en.lproj folder with the English tables");
            return std::move(problems_);
        }
        buildReference();
        for (const std::string& language : languages_) checkLanguage(language);
        checkLocalizationList();
        checkPacking();
        return std::move(problems_);
    }

private:
    const LocalizationSources& sources_;
    std::vector<std::string> languages_;
    std::map<std::string, LanguageFolder> folders_;
    // table → key → the English format its translations keep
    std::map<std::string, std::map<std::string, std::string>> reference_;
    std::vector<LocalizationProblem> problems_;

    void add(Kind kind, const std::string& language, std::string message) {
        problems_.push_back(LocalizationProblem{kind, language, std::move(message)});
    }

    LanguageFolder load(const std::string& language) {
        LanguageFolder folder;
        std::map<std::string, fs::path> seen;
        for (const fs::path& resources : sources_.resourceFolders) {
            const fs::path directory = resources / (language + ".lproj");
            std::error_code error;
            if (!fs::is_directory(directory, error)) continue;
            std::vector<fs::path> paths;
            for (fs::directory_iterator item(directory, error), end; !error && item != end; item.increment(error)) {
                paths.push_back(item->path());
            }
            std::sort(paths.begin(), paths.end());
            for (const fs::path& path : paths) {
                const std::string name = path.filename().string();
                const std::string shown = language + ".lproj/" + name;
                folder.files.emplace_back(name, path);
                if (const auto [earlier, inserted] = seen.emplace(name, path); !inserted) {
                    add(Kind::packing, language,
                        shown + " is in two resource folders (" + earlier->second.parent_path().parent_path().string() +
                            " and " + resources.string() + "); the bundle holds one");
                    continue;
                }
                const std::string extension = path.extension().string();
                const std::string table = path.stem().string();
                if (extension != ".strings" && extension != ".stringsdict") {
                    add(Kind::unreadable, language, shown + ": only .strings and .stringsdict files belong here");
                    continue;
                }
                const std::optional<std::string> bytes = readFile(path);
                if (!bytes) {
                    add(Kind::unreadable, language, shown + ": cannot be read");
                    continue;
                }
                if (extension == ".strings") {
                    const orvik::StringsTable parsed = orvik::parseStringsTable(*bytes);
                    if (parsed.error) {
                        add(Kind::unreadable, language, shown + ": " + parsed.error->description());
                        continue;
                    }
                    folder.strings[table] = parsed.entries;
                } else {
                    const orvik::StringsDictionary parsed = orvik::parseStringsDictionary(*bytes);
                    if (parsed.error) {
                        add(Kind::unreadable, language, shown + ": " + parsed.error->description());
                        continue;
                    }
                    folder.dictionaries[table] = parsed.entries;
                }
            }
        }
        return folder;
    }

    void buildReference() {
        for (const auto& [table, entries] : folders_.at(development).strings) {
            for (const orvik::StringsEntry& entry : entries) reference_[table].emplace(entry.key, entry.value);
        }
        if (!reference_.contains(infoPlistTable)) {
            for (const auto& [key, value] : sources_.infoPlistStrings) reference_[infoPlistTable].emplace(key, value);
        }
    }

    static std::string quoted(const std::string& text) { return "\"" + text + "\""; }

    static bool isBlank(const std::string& text) {
        return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
    }

    // The argument types a format reads, or a problem.
    static std::optional<std::map<int, std::string>> typesOf(const std::string& format,
                                                             const std::map<std::string, std::string>& variableTypes,
                                                             std::string& problem) {
        const orvik::FormatParse parse = orvik::parseFormat(format);
        if (parse.error) {
            problem = "has a '%' that starts no placeholder (" + *parse.error + "; write %% for a percent sign)";
            return std::nullopt;
        }
        bool numbered = false;
        bool unnumbered = false;
        for (const orvik::FormatSpecifier& specifier : parse.specifiers) {
            (specifier.position ? numbered : unnumbered) = true;
        }
        if (numbered && unnumbered) {
            problem = "mixes numbered placeholders (%1$@) with unnumbered ones (%@)";
            return std::nullopt;
        }
        std::string conflict;
        std::optional<std::map<int, std::string>> types = orvik::argumentTypes(parse.specifiers, variableTypes, &conflict);
        if (!types) problem = "reads " + conflict;
        return types;
    }

    void checkPlaceholders(const std::string& language, const std::string& where, const std::string& format,
                           const std::string& referenceFormat,
                           const std::map<std::string, std::string>& variableTypes = {},
                           std::optional<int> mayOmitArgument = std::nullopt) {
        std::string problem;
        const std::optional<std::map<int, std::string>> expected = typesOf(referenceFormat, {}, problem);
        if (!expected) return;  // the English format is checked as the English table
        const std::optional<std::map<int, std::string>> actual = typesOf(format, variableTypes, problem);
        if (!actual) {
            add(Kind::placeholders, language, where + " " + problem);
            return;
        }
        if (*actual == *expected) return;
        if (mayOmitArgument) {
            std::map<int, std::string> without = *expected;
            without.erase(*mayOmitArgument);
            if (*actual == without) return;
        }
        add(Kind::placeholders, language,
            where + " reads " + orvik::describeArguments(*actual) + " where the key reads " +
                orvik::describeArguments(*expected));
    }

    // Whether `category` holds a single whole number in `language` (a form
    // for it may leave the number out).
    static bool holdsOneNumber(const std::string& language, PluralCategory category) {
        if (category == PluralCategory::zero) return true;  // Foundation uses a zero form for 0 only
        int count = 0;
        for (std::int64_t n = 0; n <= 10000 && count < 2; ++n) {
            if (orvik::pluralCategory(language, n) == category) ++count;
        }
        return count == 1;
    }

    static std::string joinedNames(const std::vector<PluralCategory>& categories) {
        std::string text;
        for (PluralCategory category : categories) {
            if (!text.empty()) text += ", ";
            text += orvik::pluralCategoryName(category);
        }
        return text;
    }

    void checkLanguage(const std::string& language) {
        const LanguageFolder& folder = folders_.at(language);
        const bool isDevelopment = language == development;
        // Strings tables: every key of the English table and no other.
        for (const auto& [table, keys] : reference_) {
            const std::string file = table + ".strings";
            const auto found = folder.strings.find(table);
            if (found == folder.strings.end()) {
                if (!isDevelopment) {
                    const std::string count = std::to_string(keys.size()) + (keys.size() == 1 ? " text" : " texts");
                    add(Kind::keys, language,
                        file + " is missing: it holds " +
                            (table == infoPlistTable ? "the Info.plist's " + count : "the " + count + " of en.lproj/" + file) +
                            ", translated");
                }
                continue;
            }
            std::map<std::string, int> lines;
            for (const orvik::StringsEntry& entry : found->second) {
                const std::string where = file + ": " + quoted(entry.key);
                if (!lines.emplace(entry.key, entry.line).second) {
                    add(Kind::keys, language, where + " is given twice (lines " + std::to_string(lines[entry.key]) +
                                                  " and " + std::to_string(entry.line) + ")");
                    continue;
                }
                const auto key = keys.find(entry.key);
                if (key == keys.end()) {
                    add(Kind::keys, language, where + " (line " + std::to_string(entry.line) + ") is no key of the English table");
                    continue;
                }
                if (isBlank(entry.value)) add(Kind::empty, language, where + " has an empty value");
                if (!isDevelopment) checkPlaceholders(language, where + " (line " + std::to_string(entry.line) + ")", entry.value, key->second);
            }
            for (const auto& [key, format] : keys) {
                if (!lines.contains(key)) add(Kind::keys, language, file + ": " + quoted(key) + " is missing");
            }
        }
        for (const auto& [table, entries] : folder.strings) {
            if (!reference_.contains(table)) add(Kind::keys, language, table + ".strings is no table of en.lproj");
        }
        for (const auto& [table, entries] : folder.dictionaries) checkDictionary(language, table, entries);
    }

    void checkDictionary(const std::string& language, const std::string& table,
                         const std::vector<orvik::StringsDictionaryEntry>& entries) {
        const std::string file = table + ".stringsdict";
        const auto keys = reference_.find(table);
        if (keys == reference_.end() || table == infoPlistTable) {
            add(Kind::keys, language, file + " belongs to no strings table of en.lproj");
            return;
        }
        const std::optional<std::vector<PluralCategory>> needed = orvik::pluralCategoriesForWholeNumbers(language);
        if (!needed) {
            add(Kind::plurals, language,
                file + " needs the plural rules of " + quoted(language) +
                    ", which kit-core/src/PluralRules.cpp does not have yet");
        }
        std::set<std::string> seen;
        for (const orvik::StringsDictionaryEntry& entry : entries) {
            const std::string where = file + ": " + quoted(entry.key);
            if (!seen.insert(entry.key).second) {
                add(Kind::keys, language, where + " is given twice");
                continue;
            }
            const auto key = keys->second.find(entry.key);
            if (key == keys->second.end()) {
                add(Kind::keys, language, where + " (line " + std::to_string(entry.line) + ") is no key of the English table");
                continue;
            }
            std::map<std::string, std::string> variableTypes;
            for (const auto& [name, variable] : entry.variables) variableTypes.emplace(name, variable.valueType);
            checkPlaceholders(language, where + "'s NSStringLocalizedFormatKey", entry.format, key->second, variableTypes);
            const orvik::FormatParse parse = orvik::parseFormat(entry.format);
            for (const auto& [name, variable] : entry.variables) {
                const std::string variableWhere = where + ", variable " + quoted(name);
                if (needed) checkCategories(language, variableWhere, variable, *needed);
                // The format with this variable in each of its forms and every
                // other variable in its "other" form.
                for (const auto& [category, form] : variable.forms) {
                    const std::string formWhere = variableWhere + ", " + std::string(orvik::pluralCategoryName(category)) + " form";
                    if (isBlank(form)) {
                        add(Kind::empty, language, formWhere + " is empty");
                        continue;
                    }
                    std::string expanded;
                    std::size_t copied = 0;
                    std::optional<int> argument;
                    for (const orvik::FormatSpecifier& specifier : parse.specifiers) {
                        if (!specifier.variable) continue;
                        expanded.append(entry.format, copied, specifier.offset - copied);
                        if (*specifier.variable == name) {
                            expanded += form;
                            argument = specifier.argument;
                        } else if (const auto other = entry.variables.find(*specifier.variable); other != entry.variables.end()) {
                            expanded += other->second.forms.at(PluralCategory::other);
                        }
                        copied = specifier.offset + specifier.text.size();
                    }
                    expanded.append(entry.format, copied);
                    const bool mayOmit = argument && needed && holdsOneNumber(language, category);
                    checkPlaceholders(language, formWhere, expanded, key->second, {},
                                      mayOmit ? argument : std::nullopt);
                }
            }
        }
    }

    // Forms the current CLDR rules no longer give a language but the rules
    // of a supported macOS still do: Hebrew's "many" (multiples of ten from
    // 20) left CLDR in version 42, after the ICU data macOS 13 carries.
    static bool takenByEarlierRules(const std::string& language, PluralCategory category) {
        const std::string base = language.substr(0, language.find('-'));
        return (base == "he" || base == "iw") && category == PluralCategory::many;
    }

    void checkCategories(const std::string& language, const std::string& where, const orvik::PluralVariable& variable,
                         const std::vector<PluralCategory>& needed) {
        std::vector<PluralCategory> missing;
        for (PluralCategory category : needed) {
            if (!variable.forms.contains(category)) missing.push_back(category);
        }
        if (!missing.empty()) {
            add(Kind::plurals, language,
                where + " lacks the " + joinedNames(missing) + " form" + (missing.size() > 1 ? "s" : "") +
                    " (whole numbers in " + language + " take " + joinedNames(needed) + ")");
        }
        for (const auto& [category, form] : variable.forms) {
            if (category == PluralCategory::zero || category == PluralCategory::other) continue;
            if (takenByEarlierRules(language, category)) continue;
            if (std::find(needed.begin(), needed.end(), category) == needed.end()) {
                add(Kind::plurals, language,
                    where + " has a " + std::string(orvik::pluralCategoryName(category)) +
                        " form, which no whole number takes in " + language + " (" + joinedNames(needed) + ")");
            }
        }
    }

    void checkLocalizationList() {
        if (!sources_.bundleLocalizations) {
            if (languages_.size() > 1) {
                std::string all;
                for (const std::string& language : languages_) all += (all.empty() ? "" : ", ") + language;
                add(Kind::localizationList, "",
                    "Info.plist has no CFBundleLocalizations; with more than one language folder it lists them all: " + all);
            }
            return;
        }
        std::set<std::string> listed;
        for (const std::string& language : *sources_.bundleLocalizations) {
            if (!listed.insert(language).second) {
                add(Kind::localizationList, language, "CFBundleLocalizations lists " + quoted(language) + " twice");
            } else if (std::find(languages_.begin(), languages_.end(), language) == languages_.end()) {
                add(Kind::localizationList, language,
                    "CFBundleLocalizations lists " + quoted(language) + ", which has no .lproj folder");
            }
        }
        for (const std::string& language : languages_) {
            if (!listed.contains(language)) {
                add(Kind::localizationList, language,
                    "add " + quoted(language) + " to CFBundleLocalizations in app/bundle/Info.plist.in");
            }
        }
    }

    void checkPacking() {
        if (!sources_.packedFiles) return;
        std::map<std::string, fs::path> packed;
        for (const auto& [destination, source] : *sources_.packedFiles) {
            if (!packed.emplace(destination, source).second) {
                add(Kind::packing, "", "the bundle's resource list has " + destination + " twice");
            }
            std::error_code error;
            if (!fs::is_regular_file(source, error)) {
                add(Kind::packing, "", "the bundle's resource list packs " + source.string() + ", which does not exist");
            }
        }
        for (const auto& [language, folder] : folders_) {
            for (const auto& [name, path] : folder.files) {
                const std::string destination = "Resources/" + language + ".lproj/" + name;
                const auto found = packed.find(destination);
                if (found == packed.end()) {
                    add(Kind::packing, language,
                        language + ".lproj/" + name + " is not in the bundle's resource list (configure the build again)");
                } else if (std::error_code error; found->second.lexically_normal() != path.lexically_normal() &&
                                                      !fs::equivalent(found->second, path, error)) {
                    add(Kind::packing, language, destination + " is packed from " + found->second.string() + ", not " + path.string());
                }
            }
        }
    }
};

}  // namespace

std::vector<LocalizationProblem> checkLocalizations(const LocalizationSources& sources) {
    return Checker(sources).run();
}

std::string describe(const std::vector<LocalizationProblem>& problems) {
    std::map<std::string, std::vector<std::string>> byLanguage;
    for (const LocalizationProblem& problem : problems) byLanguage[problem.language].push_back(problem.message);
    std::string text;
    for (const auto& [language, messages] : byLanguage) {
        text += (language.empty() ? std::string("Every language") : language + ".lproj") + ": " +
                std::to_string(messages.size()) + (messages.size() == 1 ? " thing" : " things") + " to do\n";
        for (const std::string& message : messages) text += "  - " + message + "\n";
    }
    return text;
}

}  // namespace bundlefiles
