#include "schema.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

namespace {

using nlohmann::json;
using Adapter = valijson::adapters::NlohmannJsonAdapter;
using Pointer = json::json_pointer;

json read_schema(const std::string& schema_file) {
    std::ifstream file(RECALCULO_DOCS "/" + schema_file);
    return json::parse(file);
}

/// Walks documents along a schema and notes what of the schema they have. It takes every way that the schema
/// leaves open, and so relies on the documents being valid.
class Walk {
public:
    explicit Walk(const json& schema) : schema_(schema) {}

    void meet(const Pointer& place, const json& value) {
        const json& rule = schema_.at(place);
        if (rule.contains("$ref"))
            meet(Pointer(rule.at("$ref").get<std::string>().substr(1)), value);
        for (const char* several : {"allOf", "anyOf"})
            for (std::size_t index = 0; rule.contains(several) && index < rule.at(several).size(); ++index)
                meet(place / several / index, value);
        if (rule.contains("enum"))
            for (std::size_t index = 0; index < rule.at("enum").size(); ++index)
                if (rule.at("enum").at(index) == value)
                    met_.insert((place / "enum" / index).to_string());
        if (rule.contains("items") && value.is_array())
            for (const json& item : value)
                meet(place / "items", item);
        if (rule.contains("properties") && value.is_object())
            for (const auto& member : value.items())
                if (rule.at("properties").contains(member.key())) {
                    const Pointer property = place / "properties" / member.key();
                    met_.insert(property.to_string());
                    meet(property, member.value());
                }
    }

    /// Everything that could be met.
    void list(const Pointer& place, std::set<std::string>& all) const {
        const json& rule = schema_.at(place);
        for (const char* objects : {"properties", "definitions"})
            if (rule.contains(objects))
                for (const auto& member : rule.at(objects).items()) {
                    if (objects == std::string("properties"))
                        all.insert((place / objects / member.key()).to_string());
                    list(place / objects / member.key(), all);
                }
        for (const char* values : {"enum", "anyOf"})
            for (std::size_t index = 0; rule.contains(values) && index < rule.at(values).size(); ++index) {
                if (values == std::string("enum"))
                    all.insert((place / values / index).to_string());
                else
                    list(place / values / index, all);
            }
        if (rule.contains("items"))
            list(place / "items", all);
    }

    const std::set<std::string>& met() const { return met_; }

private:
    const json& schema_;
    std::set<std::string> met_;
};

} // namespace

DocumentSchema::DocumentSchema(const std::string& schema_file)
    : text_(read_schema(schema_file)), schema_(std::make_shared<valijson::Schema>()) {
    valijson::SchemaParser(valijson::SchemaParser::kDraft7).populateSchema(Adapter(text_), *schema_);
}

std::string DocumentSchema::errors(const json& document) const {
    valijson::ValidationResults results;
    valijson::Validator().validate(*schema_, Adapter(document), &results);
    std::string errors;
    for (valijson::ValidationResults::Error error; results.popError(error);) {
        for (const std::string& step : error.context)
            errors += step;
        errors += ": " + error.description + "\n";
    }
    return errors;
}

std::vector<std::string> DocumentSchema::unmet(const std::vector<json>& documents) const {
    Walk walk(text_);
    for (const json& document : documents)
        walk.meet(Pointer(), document);
    std::set<std::string> all;
    walk.list(Pointer(), all);
    std::vector<std::string> unmet;
    std::set_difference(all.begin(), all.end(), walk.met().begin(), walk.met().end(),
                        std::back_inserter(unmet));
    return unmet;
}

std::string schema_errors(const std::string& schema_file, const json& document) {
    return DocumentSchema(schema_file).errors(document);
}

std::vector<std::string> schema_keys(const std::string& schema_file, const std::string& definition) {
    const json schema = read_schema(schema_file);
    const json& object = definition.empty() ? schema : schema.at("definitions").at(definition);
    std::vector<std::string> keys;
    for (const auto& property : object.at("properties").items())
        keys.push_back(property.key());
    return keys;
}
