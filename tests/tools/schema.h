// Holds JSON against the schemas in docs/.

#ifndef RECALCULO_TESTS_SCHEMA_H
#define RECALCULO_TESTS_SCHEMA_H

#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace valijson {
class Schema;
}

/// A schema of docs/, read once for many documents.
class DocumentSchema {
public:
    explicit DocumentSchema(const std::string& schema_file);

    /// What the schema finds wrong, a line for each error; empty for a valid document.
    std::string errors(const nlohmann::json& document) const;

    /// The properties and the values of enumerations that no document has, as pointers into the schema.
    std::vector<std::string> unmet(const std::vector<nlohmann::json>& documents) const;

private:
    const nlohmann::json text_;
    std::shared_ptr<valijson::Schema> schema_;
};

/// What a schema of docs/ finds wrong in one document.
std::string schema_errors(const std::string& schema_file, const nlohmann::json& document);

/// The property names of the object that a definition of the schema describes; of the document itself for "".
std::vector<std::string> schema_keys(const std::string& schema_file, const std::string& definition);

#endif
