// check_result RESULT.json HEADEND.json: tells what is wrong with a result, and fails if anything is.

#include <exception>
#include <fstream>

#include <fmt/format.h>

#include "placement/result_invariants.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        fmt::print(stderr, "usage: check_result RESULT.json HEADEND.json\n");
        return 2;
    }
    try {
        std::ifstream result_file(argv[1]);
        std::ifstream headend_file(argv[2]);
        const auto result = nlohmann::json::parse(result_file);
        const auto faults = zarven::tool::faults_of(result, nlohmann::json::parse(headend_file));
        for (const std::string& fault : faults)
            fmt::print("{}: {}\n", argv[1], fault);
        fmt::print("{}: {} services placed, {} left out, {} faults\n", argv[1],
                   result.at("summary").at("placed").get<unsigned>(),
                   result.at("summary").at("left_out").get<unsigned>(), faults.size());
        return faults.empty() ? 0 : 1;
    } catch (const std::exception& error) {
        fmt::print(stderr, "check_result: {}\n", error.what());
        return 2;
    }
}
