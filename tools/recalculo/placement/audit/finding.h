// What the audit finds, as plain values: sentences, each with whether something is broken. None as a rule;
// the engine's exchanges can leave thousands.

#ifndef RECALCULO_FINDING_H
#define RECALCULO_FINDING_H

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

namespace zarven::tool {

struct Finding {
    /// What it is about: a service, a module, or all together, which has no name.
    std::string subject;
    std::string problem;
    /// The head-end would not work so. Else it would, and only a count of the engine is off.
    bool is_broken = true;
    /// It is a limit of a module that is broken.
    bool is_limit = false;
    /// The modules that the problem names.
    std::vector<std::string> macs;
};

/// The finding as a sentence.
std::string text_of(const Finding& finding);

/// What is broken, in numbers: limits, and services each once.
struct Broken {
    std::size_t limits = 0;
    std::size_t services = 0;

    std::size_t all() const { return limits + services; }
};

Broken broken_among(const std::vector<Finding>& findings);

/// Those that are broken, or those that are not.
std::vector<Finding> only(bool broken, const std::vector<Finding>& findings);

template <class Found> std::vector<std::string> texts_of(const std::vector<Found>& findings) {
    std::vector<std::string> texts;
    std::transform(findings.begin(), findings.end(), std::back_inserter(texts), text_of);
    return texts;
}

} // namespace zarven::tool

#endif
