// The schemas of what the tool writes, against what it writes: for results made by hand, for the examples,
// and for random head-ends.

#include <algorithm>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "Generador.h"
#include "headend/headend_json.h"
#include "placement/change/comparison.h"
#include "placement/documents.h"
#include "placement/reasons/explanation.h"
#include "placement/result_json.h"
#include "placement/running/host.h"
#include "placement/sizing/sizing.h"
#include "records/whole_documents.h"
#include "report/result_fixture.h"
#include "schema.h"
#include "tries.h"

namespace zarven::tool::written_schema_test {
namespace {

using nlohmann::json;
using whole_documents::explanations;
using whole_documents::result_with_every_cause;
using whole_documents::result_with_strategies_not_tried;
using whole_documents::whole_bound;
using whole_documents::whole_choice;
using whole_documents::whole_comparison;
using whole_documents::whole_drill;
using whole_documents::whole_explanation;
using whole_documents::whole_result;
using whole_documents::whole_sizing;
using Pointer = json::json_pointer;

struct Kind {
    const char* schema;
    json whole;
    /// Members that may be absent: a pointer for one of the document, a name for one of any object within.
    std::vector<std::string> optional;
    /// What finds no place in the same document.
    json more = json();
};

std::ostream& operator<<(std::ostream& out, const Kind& kind) {
    return out << kind.schema;
}

class WrittenSchema : public testing::TestWithParam<Kind> {
protected:
    const json& whole() const { return GetParam().whole; }

    bool may_be_absent(const Pointer& place) const {
        const auto& optional = GetParam().optional;
        const auto is = [&optional](const std::string& name) {
            return std::find(optional.begin(), optional.end(), name) != optional.end();
        };
        return is(place.to_string()) || is(place.back()) || may_be_absent_of_finding(place);
    }

    static bool may_be_absent_of_finding(const Pointer& place) {
        const Pointer list = place.parent_pointer().parent_pointer();
        const std::string key = place.back();
        return !list.empty() && list.back() == "findings" &&
               (key == "limit" || key == "subject" || key == "modules");
    }

    const DocumentSchema schema{GetParam().schema};
};

/// Every value of a document, the document itself first.
std::vector<Pointer> places_in(const json& document) {
    std::vector<Pointer> places = {Pointer()};
    for (std::size_t next = 0; next < places.size(); ++next) {
        const Pointer place = places[next];
        const json& value = document.at(place);
        if (value.is_object())
            for (const auto& member : value.items())
                places.push_back(place / member.key());
        if (value.is_array())
            for (std::size_t index = 0; index < value.size(); ++index)
                places.push_back(place / index);
    }
    return places;
}

TEST_P(WrittenSchema, AcceptsADocumentWithEverything) {
    EXPECT_EQ(schema.errors(whole()), "");
}

TEST_P(WrittenSchema, HasNothingThatIsNeverWritten) {
    EXPECT_EQ(schema.unmet({whole(), GetParam().more}), std::vector<std::string>());
}

TEST_P(WrittenSchema, RefusesAnUnknownMemberInEveryObject) {
    for (const Pointer& place : places_in(whole())) {
        json document = whole();
        if (!document.at(place).is_object())
            continue;
        document[place]["unknown"] = 1;
        EXPECT_NE(schema.errors(document), "") << place;
    }
}

TEST_P(WrittenSchema, RefusesAnObjectWithoutOneOfItsMembers) {
    for (const Pointer& place : places_in(whole())) {
        if (place.empty() || !whole().at(place.parent_pointer()).is_object())
            continue;
        json document = whole();
        document[place.parent_pointer()].erase(place.back());
        EXPECT_EQ(schema.errors(document).empty(), may_be_absent(place)) << place;
    }
}

TEST_P(WrittenSchema, RefusesAValueOfAnotherType) {
    for (const Pointer& place : places_in(whole())) {
        json document = whole();
        document[place] = whole().at(place).is_string() ? json(1) : json("1");
        EXPECT_NE(schema.errors(document), "") << place;
        document[place] = 0.5;
        EXPECT_NE(schema.errors(document), "") << place;
    }
}

INSTANTIATE_TEST_SUITE_P(
    , WrittenSchema,
    testing::Values(
        Kind{"result.schema.json",
             whole_result(),
             {"/name",        "/groups",      "/one_of",     "/streams", "label",         "frequency",
              "polarization", "satellite",    "radio",       "measured", "mean_bitrate",  "group",
              "reason",       "cause",        "nearest",     "/advice",  "not_asked_for", "rates",
              "musts",        "musts_placed", "symbol_rate", "net_rate", "delivery",      "reserve"},
             result_with_strategies_not_tried()},
        Kind{"explanation.schema.json",
             whole_explanation(),
             {"/name", "/advice", "label", "radio", "measured", "mean_bitrate", "group", "output", "remedies",
              "/services/5/remedies/found/0/set", "/services/5/remedies/found/1/set"},
             explanations({}, result_with_every_cause())},
        Kind{"comparison.schema.json", whole_comparison(), {"not_asked_for"}},
        Kind{"sizing.schema.json", whole_sizing(), {"/name", "label", "not_asked_for", "stopped"}},
        Kind{"choice.schema.json",
             whole_choice(),
             {"/name", "/less_than_all", "/one_of", "/moves", "/not_given_back", "/interrupted", "/labels",
              "not_asked_for", "stopped"}},
        Kind{"drill.schema.json",
             whole_drill(),
             {"/name", "/failures/0/part/label", "/failures/1/part/label", "/failures/1/problem",
              "not_asked_for"}},
        Kind{"bound.schema.json", whole_bound(), {"/name", "not_asked_for"}}),
    [](const auto& tested) {
        const std::string file = tested.param.schema;
        return file.substr(0, file.find('.'));
    });

// ---- What stands only where something else does -------------------------------------------------------

TEST(WrittenSchemas, MembersStandWhereTheyBelong) {
    struct Case {
        const char* schema;
        json document;
        const char* place;
        json value;
    };
    const Case cases[] = {
        {"result.schema.json", whole_result(), "/modules/0/inputs/1/onid", 1},
        {"result.schema.json", whole_result(), "/modules/0/inputs/0/services/0/parent_sid", 1},
        {"result.schema.json", whole_result(), "/strategies/2/rival", "MAX"},
        {"explanation.schema.json", whole_explanation(), "/services/0/parent_sid", 1},
        {"comparison.schema.json", whole_comparison(), "/became_tight/0/output", 1},
        {"sizing.schema.json", whole_sizing(), "/raise/0/output", 1},
    };
    for (const Case& one : cases) {
        json document = one.document;
        ASSERT_EQ(schema_errors(one.schema, document), "") << one.place;
        ASSERT_FALSE(document.contains(Pointer(one.place))) << one.place;
        document[Pointer(one.place)] = one.value;
        EXPECT_NE(schema_errors(one.schema, document), "") << one.place;
    }
}

TEST(WrittenSchemas, DrawTheLinesOfTheNumbers) {
    struct Case {
        const char* schema;
        json document;
        const char* place;
        std::uint64_t most;
    };
    const Case cases[] = {
        {"result.schema.json", whole_result(), "/left_out/0/services/0/lcn", 65535},
        {"result.schema.json", whole_result(), "/left_out/0/services/0/bitrate", 4294967295},
        {"explanation.schema.json", whole_explanation(), "/services/0/modules/0/pids/used", 4294967295},
        {"comparison.schema.json", whole_comparison(), "/moved/0/before/0/input", 65535},
        {"sizing.schema.json", whole_sizing(), "/raise/0/to", 4294967295},
        {"bound.schema.json", whole_bound(), "/impossible/0/sid", 65535},
    };
    for (const Case& one : cases) {
        const DocumentSchema schema(one.schema);
        json document = one.document;
        json& value = document.at(Pointer(one.place));
        for (const std::uint64_t just_right : {std::uint64_t{0}, one.most}) {
            value = just_right;
            EXPECT_EQ(schema.errors(document), "") << one.place << " " << just_right;
        }
        value = one.most + 1;
        EXPECT_NE(schema.errors(document), "") << one.place;
        value = -1;
        EXPECT_NE(schema.errors(document), "") << one.place;
    }
}

// ---- What is written of whole head-ends ---------------------------------------------------------------

/// The schemas, each read once.
struct Schemas {
    DocumentSchema result{"result.schema.json"};
    DocumentSchema explanation{"explanation.schema.json"};
    DocumentSchema comparison{"comparison.schema.json"};
    DocumentSchema sizing{"sizing.schema.json"};
    DocumentSchema bound{"bound.schema.json"};
};

std::vector<Explanation> all_explanations(const EngineRun& run) {
    Explainer explainer(run, Listing::all_modules);
    std::vector<Explanation> list;
    for (const auto* services : {&run.engine.listaServicios, &run.clones})
        for (const auto& service : *services)
            list.push_back(explainer.explain(service));
    return list;
}

/// A run's result, explanations and bound; returns the result.
Result expect_valid(const Schemas& schemas, EngineRun& run, const std::string& name) {
    const Bound bound = bound_of(run, capacities_of(run));
    run.engine.Main_Recalculo();
    const Result result = result_of(run, name);
    EXPECT_EQ(schemas.result.errors(json::parse(result_json(result))), "");
    EXPECT_EQ(schemas.explanation.errors(explanations(all_explanations(run), result_called(name))), "");
    EXPECT_EQ(schemas.bound.errors(json::parse(bound_json(bound, result))), "");
    return result;
}

TEST(WrittenSchemas, AcceptWhatIsWrittenOfTheExamples) {
    const host::Log silence("");
    const Schemas schemas;
    for (const char* name : {"small.json", "medium.json", "modules-16.json", "modules-8-tight.json"}) {
        SCOPED_TRACE(name);
        std::ifstream file(RECALCULO_EXAMPLES "/" + std::string(name));
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        const Headend headend = read_headend(name, text);
        EngineRun run = load_engine(headend, name);
        const Result result = expect_valid(schemas, run, headend.name);
        const Strategies strategies = strategies_of(headend, name);
        EXPECT_EQ(schemas.result.errors(json::parse(result_json(result, &strategies))), "");
    }
}

TEST(WrittenSchemas, AcceptASizing) {
    const host::Log silence("");
    std::ifstream file(RECALCULO_EXAMPLES "/small.json");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const Headend headend = read_headend("small.json", text);
    const DocumentSchema schema("sizing.schema.json");
    for (const std::uint32_t most : {0U, 2U}) {
        SizingOptions options;
        options.most = most;
        const Sizing sizing = size_headend(headend, "small.json", {headend.modules.at(0)}, options);
        EXPECT_FALSE(sizing.raises.empty());
        EXPECT_EQ(sizing.addition.number.has_value(), most != 0);
        EXPECT_EQ(schema.errors(json::parse(sizing_json(sizing))), "");
    }
}

TEST(WrittenSchemas, AcceptWhatIsWrittenOfRandomHeadends) {
    const host::Log silence("");
    const Schemas schemas;
    std::size_t clones = 0;
    std::size_t differences = 0;
    Result before;
    for (std::uint32_t seed = 1; seed <= tries(300) && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        EngineRun run;
        generador::cargar(run.engine, generador::escasa(seed));
        run.clones.assign(run.engine.listaServiciosClonados.begin(), run.engine.listaServiciosClonados.end());
        const Result after = expect_valid(schemas, run, seed % 2 == 0 ? "" : "Casa");
        const Comparison comparison = compare(before, after);
        EXPECT_EQ(schemas.comparison.errors(json::parse(comparison_json(comparison))), "");
        clones += run.clones.size();
        differences += comparison.moved.size() + comparison.inputs_retuned.size() + comparison.relaxed.size();
        before = after;
    }
    // That the generator does not go stale.
    EXPECT_GE(clones, met(100));
    EXPECT_GE(differences, met(100));
}

} // namespace
} // namespace zarven::tool::written_schema_test
