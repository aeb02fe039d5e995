// check_schema SCHEMA DOCUMENT.json...: holds documents against a schema of docs/, and fails if one is not
// valid.

#include <exception>
#include <fstream>
#include <iostream>

#include "schema.h"

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: check_schema SCHEMA DOCUMENT.json...\n";
        return 2;
    }
    try {
        const DocumentSchema schema(argv[1]);
        bool is_valid = true;
        for (int index = 2; index < argc; ++index) {
            std::ifstream file(argv[index]);
            const std::string errors = schema.errors(nlohmann::json::parse(file));
            std::cout << argv[index] << (errors.empty() ? " keeps to " : " does not keep to ") << argv[1]
                      << "\n"
                      << errors;
            is_valid = is_valid && errors.empty();
        }
        return is_valid ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "check_schema: " << error.what() << "\n";
        return 2;
    }
}
