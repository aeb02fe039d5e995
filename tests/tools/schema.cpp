#include "schema.h"

#include <fstream>

#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

namespace {

using nlohmann::json;
using Adapter = valijson::adapters::NlohmannJsonAdapter;

json read_schema(const std::string& schema_file) {
    std::ifstream file(RECALCULO_DOCS "/" + schema_file);
    return json::parse(file);
}

} // namespace

std::string schema_errors(const std::string& schema_file, const json& document) {
    const json text = read_schema(schema_file);
    valijson::Schema schema;
    valijson::SchemaParser(valijson::SchemaParser::kDraft7).populateSchema(Adapter(text), schema);
    valijson::ValidationResults results;
    valijson::Validator().validate(schema, Adapter(document), &results);
    std::string errors;
    for (valijson::ValidationResults::Error error; results.popError(error);) {
        for (const std::string& step : error.context)
            errors += step;
        errors += ": " + error.description + "\n";
    }
    return errors;
}

std::vector<std::string> schema_keys(const std::string& schema_file, const std::string& definition) {
    const json schema = read_schema(schema_file);
    const json& object = definition.empty() ? schema : schema.at("definitions").at(definition);
    std::vector<std::string> keys;
    for (const auto& property : object.at("properties").items())
        keys.push_back(property.key());
    return keys;
}
