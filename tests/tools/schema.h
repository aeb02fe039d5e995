// Holds JSON against the schemas in docs/.

#ifndef RECALCULO_TESTS_SCHEMA_H
#define RECALCULO_TESTS_SCHEMA_H

#include <string>

#include <nlohmann/json.hpp>

/// What a schema of docs/ finds wrong, a line for each error; empty for a valid document.
std::string schema_errors(const std::string& schema_file, const nlohmann::json& document);

/// The property names of the object that a definition of the schema describes; of the document itself for "".
std::vector<std::string> schema_keys(const std::string& schema_file, const std::string& definition);

#endif
