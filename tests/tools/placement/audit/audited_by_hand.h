// A placement made by hand, to be audited: sound, and then off by one.

#ifndef RECALCULO_AUDITED_BY_HAND_H
#define RECALCULO_AUDITED_BY_HAND_H

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "placement/audit/audit.h"
#include "placement/engine_by_hand.h"

namespace zarven::tool::audited_by_hand {

using Findings = std::vector<std::string>;

/// The findings in their order; those that are only counted with a mark. The quick question is asked each
/// time, too.
inline Findings told(const EngineRun& run) {
    Findings texts;
    bool any_broken = false;
    for (const AuditFinding& finding : audit(run)) {
        texts.push_back((finding.is_broken ? "" : "note: ") + text_of(finding));
        any_broken = any_broken || finding.is_broken;
    }
    EXPECT_EQ(has_broken(run), any_broken);
    return texts;
}

class Audit : public EngineByHand {
protected:
    /// Two services of one stream, each on an output of module A, and one that is left out.
    Audit() {
        Headend headend = two_modules();
        headend.services = {service(1, 10), service(2, 10), service(3, 20)};
        headend.services[0].ca_pids = 3;
        headend.services[0].ca_pids_max = 3;
        headend.clones = {clone_of(headend.services[0])};
        load(headend);
        place("A", loaded(0), 1, 1);
        place("A", loaded(1), 1, 2);
        leave_out(loaded(2));
    }

    Findings findings() const { return told(run); }

    /// The findings with a counter set to just below what it was, to what it was, and to just above.
    template <class Counter>
    void expect_exact(Counter& counter, const Findings& below, const Findings& above) {
        --counter;
        EXPECT_EQ(findings(), below);
        ++counter;
        EXPECT_EQ(findings(), Findings{});
        ++counter;
        EXPECT_EQ(findings(), above);
        --counter;
    }
};

inline const std::string s1 = "LCN 1 \"S1\" of stream 1/10: ";
inline const std::string s3 = "LCN 3 \"S3\" of stream 1/20: ";
inline const std::string note = "note: ";
inline const std::string clone = "clone LCN 1 \"S1\" of stream 1/10: ";

} // namespace zarven::tool::audited_by_hand

#endif
