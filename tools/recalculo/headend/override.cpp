// A path is walked by the cursor that also reads, so that a wrong step is told in the same words. First all
// the places that a path names are found, then the value is put there.

#include "headend/override.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

#include "base/failure.h"
#include "base/utf8.h"
#include "base/words.h"
#include "headend/headend_json.h"
#include "headend/mac.h"
#include "records/description.h"
#include "records/document_failure.h"
#include "records/json_cursor.h"
#include "records/json_text.h"

namespace zarven::tool {

namespace {

using nlohmann::json;

/// A key, an entry of a list, or all entries.
struct Step {
    std::string key;
    bool is_entry = false;
    /// Of an entry; without both, all of them.
    std::optional<std::size_t> index;
    std::string mac;
};

constexpr const char* modules_key = "modules";

struct Setting {
    /// How messages begin that speak of it.
    std::string name;
    std::vector<Step> path;
    json value;
};

class PathReader {
public:
    PathReader(const std::string& setting, std::string_view path) : setting_(setting), rest_(path) {}

    std::vector<Step> steps() {
        std::vector<Step> all{key()};
        while (!rest_.empty()) {
            if (rest_.front() == '[') {
                all.push_back(entry(all.size() == 1 && all.front().key == modules_key));
                continue;
            }
            if (rest_.front() != '.')
                complain(rest_, "\".\" or \"[\"");
            rest_.remove_prefix(1);
            all.push_back(key());
        }
        return all;
    }

private:
    [[noreturn]] void complain(std::string_view found, const char* expected) const {
        throw Failure(fmt::format("{}: found \"{}\", expected {}", setting_, found, expected));
    }

    Step key() {
        const std::string_view word = rest_.substr(0, rest_.find_first_of(".[]"));
        if (word.empty())
            complain(rest_, "a key");
        rest_.remove_prefix(word.size());
        return {std::string(word), false, {}, ""};
    }

    Step entry(bool may_be_mac) {
        const std::size_t end = std::min(rest_.find(']'), rest_.size() - 1);
        const std::string_view bracket = rest_.substr(0, end + 1);
        const std::string_view inside = bracket.substr(1, bracket.size() - 2);
        rest_.remove_prefix(bracket.size());
        if (bracket == "[*]")
            return {"", true, {}, ""};
        const std::size_t most_digits = 9;
        const bool is_whole = bracket.back() == ']' && !inside.empty();
        if (is_whole && inside.size() <= most_digits && inside.find_first_not_of("0123456789") == inside.npos)
            return {"", true, std::stoul(std::string(inside)), ""};
        if (is_whole && may_be_mac)
            return {"", true, {}, std::string(inside)};
        complain(bracket, may_be_mac ? "[n] with a whole number from 0, [MAC], or [*]"
                                     : "[n] with a whole number from 0, or [*]");
    }

    const std::string& setting_;
    std::string_view rest_;
};

Setting read_setting(const std::string& text) {
    Setting setting;
    setting.name = fmt::format("--set '{}'", text);
    const std::size_t equals = text.find('=');
    if (equals == text.npos)
        throw Failure(setting.name + ": found no \"=\", expected PATH=VALUE");
    const std::string value = text.substr(equals + 1);
    if (!is_utf8(text))
        throw Failure(setting.name + ": found bytes that are not UTF-8");
    setting.path = PathReader(setting.name, std::string_view(text).substr(0, equals)).steps();
    setting.value = json::accept(value) ? parse_json(setting.name, value) : json(value);
    return setting;
}

/// Finds all the places that a path names.
class PlaceFinder {
public:
    explicit PlaceFinder(const Setting& setting) : setting_(setting) {}

    std::vector<json::json_pointer> find(const JsonCursor& document) {
        find(document, 0, json::json_pointer());
        return std::move(places_);
    }

private:
    /// The keys that the object at a step may have; none for an object that has no place in a head-end.
    std::vector<std::string> known_keys(std::size_t step) const {
        if (step == 0)
            return headend_description().keys();
        const FieldDescription* list = headend_description().field(setting_.path[0].key);
        const bool is_in_list =
            step == 2 && setting_.path[1].is_entry && list != nullptr && list->value.kind == ValueKind::list;
        return is_in_list ? list->value.entry.front().record->keys() : std::vector<std::string>();
    }

    void find(const JsonCursor& here, std::size_t step, const json::json_pointer& place) {
        if (step == setting_.path.size())
            places_.push_back(place);
        else if (setting_.path[step].is_entry)
            find_entries(here, step, place);
        else
            find_member(here, step, place);
    }

    void find_member(const JsonCursor& here, std::size_t step, const json::json_pointer& place) {
        const std::string& key = setting_.path[step].key;
        const std::vector<std::string> known = known_keys(step);
        if (!here.present() || known.empty())
            here.complain("nothing further in the path");
        here.check_object();
        here.check_key(key, known);
        find(here.member(key), step + 1, place / key);
    }

    /// Of the first module with the MAC: the engine takes no second one.
    static std::size_t index_of_module(const JsonCursor& here, const std::vector<JsonCursor>& modules,
                                       const std::string& mac) {
        std::vector<std::string> macs;
        for (const JsonCursor& module : modules) {
            module.check_object();
            macs.push_back(module.member("mac").text());
            if (canonical_mac(macs.back()) == canonical_mac(mac))
                return macs.size() - 1;
        }
        here.complain(fmt::format("a module with the MAC \"{}\"{}", mac, did_you_mean(mac, macs)));
    }

    void find_entries(const JsonCursor& here, std::size_t step, const json::json_pointer& place) {
        const std::vector<JsonCursor> entries = here.elements();
        if (entries.empty())
            here.complain("one with entries");
        const std::optional<std::size_t> index =
            setting_.path[step].mac.empty() ? setting_.path[step].index
                                            : index_of_module(here, entries, setting_.path[step].mac);
        if (index && *index >= entries.size())
            here.complain(fmt::format("an entry [{}]; the last one is [{}]", *index, entries.size() - 1));
        for (std::size_t entry = index.value_or(0); entry < (index ? *index + 1 : entries.size()); ++entry)
            find(entries[entry], step + 1, place / entry);
    }

    const Setting& setting_;
    std::vector<json::json_pointer> places_;
};

/// A change that has been made.
struct Change {
    std::string name;
    std::vector<json::json_pointer> places;
};

Change apply(const Setting& setting, const std::string& file, json& document) {
    const std::string name = setting.name + ": " + file;
    Change change{setting.name, PlaceFinder(setting).find(JsonCursor(name, document))};
    for (const json::json_pointer& place : change.places)
        document[place] = setting.value;
    return change;
}

/// The last one that touched what the complaint is about, or null.
const Change* culprit_of(const Misfit& misfit, const std::vector<Change>& changes) {
    const auto culprit = std::find_if(changes.rbegin(), changes.rend(), [&misfit](const Change& change) {
        return std::any_of(change.places.begin(), change.places.end(),
                           [&misfit](const auto& place) { return misfit.is_within(place.to_string()); });
    });
    return culprit == changes.rend() ? nullptr : &*culprit;
}

} // namespace

Headend read_headend(const std::string& file, const std::string& text,
                     const std::vector<std::string>& settings) {
    Document document(file, text);
    check_kind(document);
    std::vector<Change> changes;
    for (const std::string& setting : settings)
        changes.push_back(apply(read_setting(setting), file, document.value()));
    try {
        return headend_of(document);
    } catch (const DocumentFailure& failure) {
        const Change* culprit = culprit_of(failure.misfit, changes);
        if (culprit == nullptr)
            throw;
        throw DocumentFailure(failure.misfit, culprit->name + ": ");
    }
}

} // namespace zarven::tool
