// What would place a service: each answer is run again here.

#include "placement/remedy/remedy.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include "headend/headend_json.h"
#include "headend/override.h"
#include "placement/engine_by_hand.h"
#include "placement/sizing/further_modules.h"

namespace zarven::tool::remedy_test {
namespace {

class Remedying : public testing::Test {
protected:
    static Result outcome(const Headend& headend) {
        EngineRun run = load_engine(headend, "f");
        run_engine(run, "f");
        return result_of(run, headend.name);
    }

    /// For the service of that LCN.
    Remedies remedies(std::uint16_t lcn, std::size_t most = 400) const {
        EngineRun run = load_engine(headend, "f");
        run_engine(run, "f");
        const Result now = result_of(run, headend.name);
        const RemedySearch search(headend, "f", run, now);
        for (const auto& service : run.engine.listaServicios)
            if (service->LCN == lcn)
                return search.remedies_for(*service, most);
        throw std::logic_error("no such service");
    }

    const host::Log silence{""};
    Headend headend;
};

/// One module that carries three services of one stream, with PIDs for two.
Headend short_of_pids() {
    Headend headend;
    headend.modules = {{"A", 3, true, 1, {38000}, 6, 0, 0, 0}};
    headend.services = {with_pids(service(1, 10), 3), with_pids(service(2, 10), 3),
                        with_pids(service(3, 10), 3)};
    return headend;
}

TEST_F(Remedying, TheSmallestRaiseFirst) {
    headend = short_of_pids();
    const Remedies found = remedies(3);
    ASSERT_FALSE(found.found.empty());
    const Remedy& first = found.found[0];
    EXPECT_EQ(first.kind, RemedyKind::raised_limit);
    EXPECT_EQ(first.raise.kind, LimitKind::pids);
    EXPECT_EQ(first.raise.from, 6u);
    EXPECT_EQ(first.raise.to, 9u);
    EXPECT_EQ(first.setting, "modules[0].pids_max=9");
    EXPECT_EQ(first.placed, 3u);
    EXPECT_TRUE(first.lost.empty());
    headend.modules[0].pids_max = 9;
    EXPECT_EQ(outcome(headend).counts.placed, first.placed);
}

TEST_F(Remedying, AServiceThatCountsForLessMayBeWithheld) {
    headend = short_of_pids();
    headend.services[0].lcn = 9;
    headend.services[2].lcn = 1;
    // Of the three the one with LCN 1 is filed first; 9 is left out and counts for least.
    EXPECT_EQ(outcome(headend).left_out.at(0).services.at(0).lcn, 9);
    for (const Remedy& remedy : remedies(9).found)
        EXPECT_NE(remedy.kind, RemedyKind::withheld_service);
    headend.services[0].value = 2;
    const Remedies found = remedies(9);
    bool any = false;
    for (const Remedy& remedy : found.found)
        if (remedy.kind == RemedyKind::withheld_service) {
            any = true;
            EXPECT_EQ(remedy.withheld.lcn, 2) << "the highest LCN of those of least value";
            EXPECT_EQ(remedy.setting, "services[1].ask=false");
            EXPECT_EQ(remedy.placed, 2u);
            EXPECT_TRUE(remedy.lost.empty()) << "the withheld one is the change, not its cost";
        }
    EXPECT_TRUE(any);
    headend.services[1].must = true;
    for (const Remedy& remedy : remedies(9).found)
        EXPECT_TRUE(remedy.kind != RemedyKind::withheld_service || remedy.withheld.lcn == 1);
}

TEST_F(Remedying, AMustMayTakeThePlaceOfWhatIsWorthMore) {
    headend = short_of_pids();
    headend.services[0].value = headend.services[1].value = 5;
    const auto withholds = [this] {
        const std::vector<Remedy> found = remedies(3).found;
        return std::any_of(found.begin(), found.end(),
                           [](const Remedy& remedy) { return remedy.kind == RemedyKind::withheld_service; });
    };
    EXPECT_FALSE(withholds());
    headend.services[2].must = true;
    EXPECT_TRUE(withholds());
}

TEST_F(Remedying, AHigherBitrateOfAnOutput) {
    headend.modules = {{"A", 3, true, 1, {10000}, 6, 0, 0, 0}};
    headend.services = {service(1, 10, 6000), service(2, 10, 6000)};
    const Remedy first = remedies(2).found.at(0);
    EXPECT_EQ(first.raise.kind, LimitKind::bitrate);
    EXPECT_EQ(first.raise.output, 1u);
    EXPECT_EQ(first.setting, "modules[0].outputs[0]=12001");
}

/// No other limit of a module makes room for more services than an output may carry.
TEST_F(Remedying, OneMoreOutput) {
    headend.modules = {{"A", 3, true, 1, {10000}, 6, 0, 0, 0}};
    for (std::uint16_t lcn = 1; lcn <= tRec_Modulo::SERVICIOS_POR_SALIDA + 1; ++lcn)
        headend.services.push_back(service(lcn, 10, 1));
    const std::uint16_t left_out = outcome(headend).left_out.at(0).services.at(0).lcn;
    const Remedy first = remedies(left_out).found.at(0);
    EXPECT_EQ(first.raise.kind, LimitKind::one_more_output);
    EXPECT_EQ(first.raise.output, 2u);
    EXPECT_EQ(first.setting, "modules[0].outputs=[10000, 10000]");
}

TEST_F(Remedying, AFurtherModule) {
    headend.modules = {{"A", 3, true, 1, {38000}, 0, 0, 0, 0}, {"B", 3, false, 1, {38000}, 0, 0, 0, 0}};
    headend.modules[1].label = "Rack";
    headend.services = {service(1, 10), service(2, 20), service(3, 30)};
    const std::uint16_t left_out = outcome(headend).left_out.at(0).services.at(0).lcn;
    const Remedy last = remedies(left_out).found.back();
    EXPECT_EQ(last.kind, RemedyKind::further_module);
    EXPECT_EQ(last.like, "A") << "the first of its kind";
    EXPECT_EQ(last.setting, "");
    EXPECT_EQ(outcome(with_modules(headend, headend.modules[0], 1)).counts.placed, last.placed);
}

TEST_F(Remedying, NoneOfThoseTried) {
    headend = short_of_pids();
    headend.services[2].ca_pids = 60000;
    headend.modules[0].outputs = {1};
    const Remedies none = remedies(3);
    EXPECT_TRUE(none.found.empty());
    EXPECT_GT(none.tried, 0u);
    const Remedies bounded = remedies(3, 1);
    EXPECT_LE(bounded.tried, 3u) << "one of each kind";
    EXPECT_EQ(remedies(3, 0).tried, 0u);
}

TEST_F(Remedying, AChangeWithWhichTheEngineFailsIsNone) {
    headend = short_of_pids();
    EngineRun run = load_engine(headend, "f");
    run_engine(run, "f");
    const Result now = result_of(run, headend.name);
    headend.modules[0].controller = false;
    const Remedies none =
        RemedySearch(headend, "f", run, now).remedies_for(*run.engine.listaServicios.at(2), 400);
    EXPECT_TRUE(none.found.empty());
    EXPECT_GT(none.tried, 0u);
}

/// Of random head-ends every remedy is what it says it is.
TEST_F(Remedying, HoldsWhenItIsRunAgain) {
    std::size_t raises = 0;
    std::size_t withheld = 0;
    std::size_t with_losses = 0;
    for (std::uint16_t variant = 0; variant < 12; ++variant) {
        headend = {};
        for (const char* mac : {"A", "B"})
            headend.modules.push_back({mac, 3, *mac == 'A', 2, {20000, 12000}, 7, 0, 0, 0});
        for (std::uint16_t lcn = 1; lcn <= 16; ++lcn)
            headend.services.push_back(service(lcn, static_cast<std::uint16_t>(10 + (lcn * 5 + variant) % 6),
                                               2000 + 700u * ((lcn + variant) % 5),
                                               static_cast<std::uint16_t>((lcn * variant) % 4)));
        const Result now = outcome(headend);
        for (const StreamResult& stream : now.left_out) {
            const ServiceResult& service = stream.services.front();
            const std::vector<Remedy> found = remedies(service.lcn).found;
            // Another change of a kind is told only if the first costs others and that one does not.
            for (std::size_t second = 1; second < found.size(); ++second)
                if (found[second].kind == found[second - 1].kind) {
                    EXPECT_FALSE(found[second - 1].lost.empty());
                    EXPECT_TRUE(found[second].lost.empty());
                }
            for (const Remedy& remedy : found) {
                SCOPED_TRACE(fmt::format("variant {}, LCN {}: {}", variant, service.lcn, remedy.setting));
                Headend changed = headend;
                if (remedy.kind == RemedyKind::further_module)
                    changed = with_modules(headend, headend.modules[0], 1);
                else
                    changed = read_headend("f", write_headend(headend), {remedy.setting});
                const Result then = outcome(changed);
                EXPECT_TRUE(is_placed(key_of(service), then));
                EXPECT_EQ(then.counts.placed, remedy.placed);
                for (const ServiceResult& lost : remedy.lost) {
                    EXPECT_TRUE(is_placed(key_of(lost), now));
                    EXPECT_FALSE(is_placed(key_of(lost), then));
                }
                raises += remedy.kind == RemedyKind::raised_limit ? 1 : 0;
                withheld += remedy.kind == RemedyKind::withheld_service ? 1 : 0;
                with_losses += remedy.lost.empty() ? 0 : 1;
            }
        }
    }
    EXPECT_GE(raises, 10u);
    EXPECT_GE(withheld, 5u);
    EXPECT_GE(with_losses, 5u);
}

} // namespace
} // namespace zarven::tool::remedy_test
