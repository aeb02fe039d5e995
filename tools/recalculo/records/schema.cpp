// Each record and each common kind of number is a definition that others refer to. Beside a reference nothing
// else counts in a draft 7 schema, so that a field with one wraps it in `allOf`.

#include "records/schema.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "records/json_layout.h"

namespace zarven::tool {

namespace {

using nlohmann::ordered_json;

std::string without_backquotes(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '`'), text.end());
    return text;
}

std::string description_of(const FieldDescription& field) {
    const std::string meaning = without_backquotes(field.meaning);
    if (field.fallback_words.empty())
        return meaning;
    return fmt::format("{}; by default {}{}", meaning, field.is_fallback_key ? "the " : "",
                       field.fallback_words);
}

/// A condition on one member, for `if`.
ordered_json test_of(const Condition& condition) {
    ordered_json test;
    if (condition.words.empty())
        test = {{"const", true}};
    else if (condition.words.size() == 1)
        test = {{"const", condition.words.front()}};
    else
        test = {{"enum", condition.words}};
    return {{"properties", {{condition.key, test}}}};
}

ordered_json none_of(const std::vector<std::string>& keys) {
    const auto required = [](const std::string& key) {
        return ordered_json{{"required", ordered_json::array({key})}};
    };
    if (keys.size() == 1)
        return {{"not", required(keys.front())}};
    ordered_json any = ordered_json::array();
    for (const std::string& key : keys)
        any.push_back(required(key));
    return {{"not", {{"anyOf", any}}}};
}

class SchemaMaker {
public:
    ordered_json document(const RecordDescription& record, const std::string& title) {
        ordered_json schema = {{"$schema", "http://json-schema.org/draft-07/schema#"}, {"title", title}};
        schema.update(object(record));
        ordered_json records = ordered_json::object();
        for (const RecordDescription* within : records_within(record)) {
            if (records.contains(within->name))
                throw std::logic_error("two records are called " + within->name);
            records[within->name] = object(*within);
        }
        schema["definitions"] = definitions_;
        schema["definitions"].update(records);
        return schema;
    }

private:
    ordered_json reference(const std::string& name, const ordered_json& definition) {
        definitions_[name] = definition;
        return {{"$ref", "#/definitions/" + name}};
    }

    ordered_json number(const ValueDescription& value) {
        if (value.the_one)
            return {{"const", *value.the_one}};
        ordered_json rule = {{"type", "integer"}, {"minimum", value.least}};
        if (!value.most)
            return reference("count", rule);
        rule["maximum"] = *value.most;
        if (value.least == 0 && *value.most == std::numeric_limits<std::uint16_t>::max())
            return reference("number16", rule);
        if (value.least == 0 && *value.most == std::numeric_limits<std::uint32_t>::max())
            return reference("number32", rule);
        return rule;
    }

    ordered_json word(const ValueDescription& value) {
        const ordered_json rule = {{"enum", value.words}};
        return value.words_name.empty() ? rule : reference(value.words_name, rule);
    }

    ordered_json flag(const ValueDescription& value) {
        const ordered_json any = ordered_json::array({number(value), {{"type", "boolean"}}});
        return reference("flag", {{"anyOf", any}});
    }

    ordered_json list(const ValueDescription& value) {
        ordered_json rule = {{"type", "array"}};
        if (value.fewest != 0)
            rule["minItems"] = value.fewest;
        if (value.most_entries)
            rule["maxItems"] = *value.most_entries;
        rule["items"] = rule_of(value.entry.front());
        return rule;
    }

    ordered_json text(const ValueDescription& value) {
        ordered_json rule = {{"type", "string"}};
        if (value.fewest != 0)
            rule["minLength"] = value.fewest;
        return rule;
    }

    ordered_json rule_of(const ValueDescription& value) {
        if (!value.may_be_null)
            return rule_of_kind(value);
        return {{"anyOf", ordered_json::array({rule_of_kind(value), {{"type", "null"}}})}};
    }

    ordered_json rule_of_kind(const ValueDescription& value) {
        switch (value.kind) {
        case ValueKind::truth:
            return {{"type", "boolean"}};
        case ValueKind::always_true:
            return {{"const", true}};
        case ValueKind::number:
            return number(value);
        case ValueKind::flag:
            return flag(value);
        case ValueKind::word:
            return word(value);
        case ValueKind::record:
            return {{"$ref", "#/definitions/" + value.record->name}};
        case ValueKind::list:
            return list(value);
        case ValueKind::text:
            break;
        }
        return text(value);
    }

    ordered_json property(const FieldDescription& field) {
        const ordered_json rule = rule_of(field.value);
        ordered_json property = ordered_json::object();
        if (rule.contains("$ref"))
            property["allOf"] = ordered_json::array({rule});
        else
            property[rule.begin().key()] = *rule.begin();
        property["description"] = description_of(field);
        if (!rule.contains("$ref"))
            property.update(rule);
        if (!field.fallback.empty())
            property["default"] = ordered_json::parse(field.fallback);
        return property;
    }

    ordered_json object(const RecordDescription& record) {
        ordered_json required = ordered_json::array();
        ordered_json properties = ordered_json::object();
        for (const FieldDescription& field : record.fields) {
            if (field.is_required)
                required.push_back(field.key);
            properties[field.key] = property(field);
        }
        ordered_json rule = {{"type", "object"},
                             {"description", without_backquotes(record.meaning)},
                             {"required", required},
                             {"additionalProperties", false},
                             {"properties", properties}};
        add_conditions(record, rule);
        return rule;
    }

    /// Fields that stand where another has a value, and fields that stand together.
    static void add_conditions(const RecordDescription& record, ordered_json& rule) {
        std::vector<std::pair<ordered_json, std::vector<std::string>>> tests;
        for (const FieldDescription& field : record.fields) {
            if (!field.condition)
                continue;
            if (field.condition->group != nullptr)
                rule["dependencies"][field.key] = others_of_group(record, field);
            if (field.condition->key == nullptr)
                continue;
            const ordered_json test = test_of(*field.condition);
            if (tests.empty() || tests.back().first != test)
                tests.push_back({test, {}});
            tests.back().second.push_back(field.key);
        }
        for (const auto& [test, keys] : tests) {
            const ordered_json conditional = {
                {"if", test}, {"then", {{"required", keys}}}, {"else", none_of(keys)}};
            if (tests.size() == 1)
                rule.update(conditional);
            else
                rule["allOf"].push_back(conditional);
        }
    }

    static std::vector<std::string> others_of_group(const RecordDescription& record,
                                                    const FieldDescription& field) {
        std::vector<std::string> keys;
        for (const FieldDescription& other : record.fields)
            if (other.key != field.key && other.condition && other.condition->group != nullptr &&
                std::string(other.condition->group) == field.condition->group)
                keys.push_back(other.key);
        return keys;
    }

    ordered_json definitions_ = ordered_json::object();
};

} // namespace

std::string schema_text(const RecordDescription& document, const std::string& title) {
    const std::size_t most_columns = 120;
    return laid_out(SchemaMaker().document(document, title), {1, most_columns});
}

} // namespace zarven::tool
