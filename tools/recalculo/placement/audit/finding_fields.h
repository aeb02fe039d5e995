// The fields of what the audit found, in several documents.

#ifndef RECALCULO_FINDING_FIELDS_H
#define RECALCULO_FINDING_FIELDS_H

#include <string>
#include <type_traits>
#include <vector>

#include "placement/audit/finding.h"
#include "records/fields.h"

namespace zarven::tool {

/// Not told apart by results of earlier versions.
inline constexpr const char* meaning_of_warnings =
    "What the audit found, one sentence each, first what is broken; empty as a rule";

template <> struct Fields<Finding> {
    static constexpr const char* name = "finding";
    static constexpr const char* meaning = "What the audit found";

    template <class Visitor, class Record> static void visit(Visitor& visit, Record& finding) {
        visit.required("broken", finding.is_broken,
                       "The head-end would not work so; if not, only a count of the engine is off");
        visit.if_true("limit", finding.is_limit, "What is broken is a limit of a module");
        visit.unless_empty("subject", finding.subject, "The service or the module that it is about");
        visit.required("problem", finding.problem, "What there is to say of it");
        visit.unless_empty("modules", finding.macs, "MACs of the modules that the problem names");
    }
};

/// What the audit found. What an earlier version did not tell apart may be broken.
template <class Visitor, class Findings> void visit_findings(Visitor& visit, Findings& findings) {
    std::vector<std::string> warnings = texts_of(findings);
    visit.required("warnings", warnings, meaning_of_warnings);
    visit.required("findings", findings, "The same in its parts", Since::a_later_version);
    if constexpr (!std::is_const_v<Findings>)
        if (findings.empty())
            for (const std::string& warning : warnings)
                findings.push_back({{}, warning, true, false, {}});
}

/// How much of it there is in a run.
template <class Visitor, class Record> void visit_number_of_findings(Visitor& visit, Record& run) {
    visit.required("warnings", count(run.findings), "Number of findings of the audit");
    visit.required("broken", count(run.broken), "Limits of it that are broken, and services, each once");
}

} // namespace zarven::tool

#endif
