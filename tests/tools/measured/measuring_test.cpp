// What measured rates make of the services of a head-end.

#include "measured/measuring.h"

#include <gtest/gtest.h>

namespace zarven::tool::measuring_test {
namespace {

Service service(std::uint16_t sid, std::uint32_t bitrate = 3500) {
    Service made;
    made.name = made.output_name = "Canal";
    made.onid = 1;
    made.tsid = 7;
    made.sid = made.osid = sid;
    made.bitrate = made.video_bitrate = bitrate;
    return made;
}

Service scrambled(std::uint16_t sid, std::uint16_t pids) {
    Service made = service(sid);
    made.descramble = 1;
    made.ca_pids = made.ca_pids_max = pids;
    return made;
}

/// With a rate in kbit/s.
MeasuredService seen(std::uint16_t sid, double rate) {
    MeasuredService made;
    made.onid = 1;
    made.tsid = 7;
    made.sid = sid;
    made.rate = rate * 1000;
    made.tells_scrambling = true;
    return made;
}

Measurement look(double seconds, const std::vector<MeasuredService>& services) {
    Measurement made;
    made.seconds = seconds;
    made.services = services;
    return made;
}

Measurement look_with_room(double room, const std::vector<MeasuredService>& services) {
    Measurement made = look(60, services);
    made.room = room * 1000;
    return made;
}

Measuring measure(std::vector<Service>& services, const std::vector<Measurement>& looks,
                  const Margins& margins = {}, Descrambling descrambling = Descrambling::as_planned) {
    std::vector<MeasuredFile> files;
    for (const Measurement& each : looks)
        files.push_back({"x", {each}, {}});
    return apply_measurements(files, margins, descrambling, services);
}

/// What one look makes of a service.
Service after(Service before, const MeasuredService& measured,
              Descrambling descrambling = Descrambling::as_planned) {
    std::vector<Service> services{std::move(before)};
    measure(services, {look(60, {measured})}, {}, descrambling);
    return services[0];
}

TEST(Measuring, TheGreatestRateIsThePeakAndTheMeanIsByTime) {
    std::vector<Service> services{service(5)};
    const Measuring measuring =
        measure(services, {look(30, {seen(5, 4000)}), look(10, {seen(5, 6000)}), look(20, {seen(5, 0)})});
    EXPECT_TRUE(services[0].measured);
    EXPECT_EQ(services[0].bitrate, 6000u);
    EXPECT_EQ(services[0].video_bitrate, 6000u);
    EXPECT_EQ(services[0].mean_bitrate, 4500u);
    EXPECT_EQ(measuring.measured, (ServicePlaces{0}));
    EXPECT_EQ(measuring.measured_once, 0u);
}

TEST(Measuring, WithoutTimesTheMeanIsOfTheRows) {
    std::vector<Service> services{service(5)};
    Measurement rows;
    rows.services = {seen(5, 4000), seen(5, 6000.001)};
    EXPECT_TRUE(measure(services, {rows}).short_looks.empty());
    EXPECT_EQ(services[0].bitrate, 6001u);
    EXPECT_EQ(services[0].mean_bitrate, 5001u);
}

TEST(Measuring, ARateOfNothingKeepsWhatStoodThere) {
    std::vector<Service> services{service(5), service(6)};
    const Measuring measuring = measure(services, {look(60, {seen(5, 0), seen(6, 0.001)})});
    EXPECT_FALSE(services[0].measured);
    EXPECT_EQ(services[0].bitrate, 3500u);
    EXPECT_EQ(measuring.without_rate, (ServicePlaces{0}));
    EXPECT_EQ(services[1].bitrate, 1u);
    EXPECT_EQ(measuring.measured, (ServicePlaces{1}));
    EXPECT_EQ(measuring.measured_once, 1u);
}

TEST(Measuring, LooksOfLessThanTenSecondsInAllAreTooShort) {
    const auto is_short = [](const std::vector<double>& seconds) {
        std::vector<Service> services{service(5)};
        std::vector<Measurement> looks;
        for (const double each : seconds)
            looks.push_back(look(each, {seen(5, 4000)}));
        const Measuring measuring = measure(services, looks);
        EXPECT_TRUE(services[0].measured);
        return !measuring.short_looks.empty();
    };
    EXPECT_TRUE(is_short({9.999}));
    EXPECT_FALSE(is_short({10}));
    EXPECT_FALSE(is_short({10.001}));
    EXPECT_TRUE(is_short({5, 4.999}));
    EXPECT_FALSE(is_short({5, 5}));
}

TEST(Measuring, MarginsAreForEitherKind) {
    std::vector<Service> services{service(5), service(6, 3501), service(8)};
    services[2].measured = true;
    measure(services, {look(60, {seen(5, 4000)})}, {10, 20});
    EXPECT_EQ(services[0].bitrate, 4400u);
    EXPECT_EQ(services[0].mean_bitrate, 4000u);
    EXPECT_EQ(services[1].bitrate, 4202u);
    EXPECT_EQ(services[1].video_bitrate, 4202u);
    // Measured before.
    EXPECT_EQ(services[2].bitrate, 3500u);
}

TEST(Measuring, APictureOfItsOwnRateStaysWithinTheService) {
    Service before = service(5);
    before.video_bitrate = 3000;
    EXPECT_EQ(after(before, seen(5, 4000)).video_bitrate, 3000u);
    EXPECT_EQ(after(before, seen(5, 2999)).video_bitrate, 2999u);
}

TEST(Measuring, TheServicesOfAStreamHaveNoMoreThanItsRoom) {
    for (const double room : {9001.0, 9000.0, 8999.0}) {
        std::vector<Service> services{service(5), service(6)};
        const Measuring measuring = measure(services, {look_with_room(room, {seen(5, 3000), seen(6, 6000)})});
        EXPECT_EQ(measuring.held.empty(), room >= 9000);
        EXPECT_EQ(services[0].bitrate, room >= 9000 ? 3000u : 2999u);
        EXPECT_EQ(services[1].bitrate, room >= 9000 ? 6000u : 5999u);
    }
}

TEST(Measuring, EstimatesMakeRoomFirst) {
    std::vector<Service> services{service(5), service(6, 8000), service(8, 4000)};
    const Measuring measuring = measure(services, {look_with_room(10000, {seen(5, 4000)})});
    EXPECT_EQ(services[0].bitrate, 4000u);
    EXPECT_EQ(services[1].bitrate, 4000u);
    EXPECT_EQ(services[2].bitrate, 2000u);
    ASSERT_EQ(measuring.held.size(), 1u);
    EXPECT_EQ(measuring.held[0].estimated, 16000u);
    EXPECT_EQ(measuring.held[0].carried, 10000u);
}

TEST(Measuring, TheLargestRoomOfSeveralLooksCounts) {
    std::vector<Service> services{service(5)};
    EXPECT_TRUE(
        measure(services, {look_with_room(4000, {seen(5, 3000)}), look_with_room(5000, {seen(5, 5000)}),
                           look_with_room(4500, {seen(5, 3000)})})
            .held.empty());
    EXPECT_EQ(services[0].bitrate, 5000u);
}

TEST(Measuring, ScrambledPidsAreTheCaPids) {
    MeasuredService measured = seen(5, 4000);
    measured.is_scrambled = true;
    measured.scrambled_pids = 3;
    EXPECT_EQ(after(scrambled(5, 2), measured).ca_pids, 3);
    EXPECT_EQ(after(scrambled(5, 2), measured).ca_pids_max, 3);
    EXPECT_EQ(after(scrambled(5, 4), measured).ca_pids, 3);
    EXPECT_EQ(after(scrambled(5, 4), measured).ca_pids_max, 3);
    Service with_ceiling = scrambled(5, 2);
    with_ceiling.ca_pids_max = 6;
    EXPECT_EQ(after(with_ceiling, measured).ca_pids_max, 6);
    measured.scrambled_pids = 7;
    EXPECT_EQ(after(with_ceiling, measured).ca_pids_max, 7);
    measured.scrambled_pids = 3;
    // Planned not to be descrambled.
    EXPECT_EQ(after(service(5), measured).descramble, 0);
    EXPECT_EQ(after(service(5), measured).ca_pids, 0);
    EXPECT_EQ(after(service(5), measured, Descrambling::as_measured).descramble, 1);
    EXPECT_EQ(after(service(5), measured, Descrambling::as_measured).ca_pids, 3);
    measured.scrambled_pids = 0;
    EXPECT_EQ(after(scrambled(5, 2), measured).ca_pids, 2);
}

TEST(Measuring, WhatIsClearAtTheMomentIsStillToBeDescrambled) {
    std::vector<Service> services{scrambled(5, 2), scrambled(6, 2), scrambled(8, 2), service(9)};
    MeasuredService with_ecms = seen(5, 4000);
    with_ecms.has_ecms = true;
    MeasuredService of_a_table = seen(8, 4000);
    of_a_table.tells_scrambling = false;
    const Measuring measuring =
        measure(services, {look(60, {with_ecms, seen(6, 4000), of_a_table, seen(9, 4000)})});
    EXPECT_EQ(measuring.clear_at_the_moment, (ServicePlaces{0}));
    EXPECT_EQ(measuring.clear, (ServicePlaces{1}));
    EXPECT_EQ(services[0].ca_pids, 2);
    EXPECT_EQ(services[0].descramble, 1);
}

TEST(Measuring, TheKindIsTheMeasuredOne) {
    MeasuredService measured = seen(5, 4000);
    measured.kind = ChannelKind::hd;
    Service unknown = service(5);
    unknown.kind_unknown = true;
    EXPECT_EQ(after(unknown, measured).video_format, tRec_Servicio::VIDEO_HD);
    EXPECT_FALSE(after(unknown, measured).kind_unknown);
    measured.kind = ChannelKind::radio;
    EXPECT_EQ(after(unknown, measured).type, type_radio);
    EXPECT_EQ(after(unknown, measured).video_bitrate, 0u);
    measured.kind.reset();
    EXPECT_TRUE(after(unknown, measured).kind_unknown);
    Service radio = service(5);
    radio.type = type_radio;
    radio.video_bitrate = 0;
    measured.kind = ChannelKind::sd;
    EXPECT_EQ(after(radio, measured).type, type_television);
    EXPECT_EQ(after(radio, measured).video_bitrate, 4000u);
    Service hd = service(5);
    hd.video_format = tRec_Servicio::VIDEO_HD;
    std::vector<Service> services{hd, service(6)};
    MeasuredService other = seen(6, 1);
    other.kind = ChannelKind::sd;
    EXPECT_EQ(measure(services, {look(60, {measured, other})}).of_other_kind, (ServicePlaces{0}));
    EXPECT_EQ(services[0].video_format, 0);
}

TEST(Measuring, ALaterLookMayTellLessOfTheKind) {
    MeasuredService hd = seen(5, 4000);
    hd.kind = ChannelKind::hd;
    MeasuredService sd = hd;
    sd.kind = ChannelKind::sd;
    for (const auto& looks : {std::vector<MeasuredService>{hd, seen(5, 4000)}, {hd, sd}, {sd, hd}}) {
        std::vector<Service> services{service(5)};
        const Measuring measuring = measure(services, {look(60, {looks[0]}), look(60, {looks[1]})});
        EXPECT_EQ(services[0].video_format, tRec_Servicio::VIDEO_HD);
        EXPECT_EQ(measuring.kinds.at(0), ChannelKind::hd);
    }
}

TEST(Measuring, ANameIsTakenOnlyWhereNoneIsKnown) {
    MeasuredService measured = seen(5, 4000);
    measured.name = "Uno";
    EXPECT_EQ(after(service(5), measured).name, "Canal");
    Service nameless = service(5);
    nameless.name = nameless.output_name = "SID 5";
    EXPECT_EQ(after(nameless, measured).name, "Uno");
    EXPECT_EQ(after(nameless, measured).output_name, "Uno");
    nameless.output_name = "Mine";
    EXPECT_EQ(after(nameless, measured).output_name, "Mine");
    nameless.name = "";
    EXPECT_EQ(after(nameless, measured).name, "Uno");
    measured.name = "";
    measured.is_name_unseen = true;
    std::vector<Service> services{service(5)};
    EXPECT_EQ(measure(services, {look(60, {measured})}).without_name, (ServicePlaces{0}));
    EXPECT_EQ(services[0].name, "Canal");
    // A meter that never tells names has not missed one.
    EXPECT_TRUE(measure(services, {look(60, {seen(5, 4000)})}).without_name.empty());
}

TEST(Measuring, AServiceIsKnownByItsThreeIds) {
    std::vector<Service> services{service(5), service(5), service(50)};
    services[1].onid = 2;
    services[2].osid = 6;
    MeasuredService without_onid = seen(6, 6000);
    without_onid.onid.reset();
    measure(services, {look(60, {seen(5, 5000), seen(50, 1), without_onid})});
    EXPECT_EQ(services[0].bitrate, 5000u);
    EXPECT_EQ(services[1].bitrate, 3500u);
    EXPECT_EQ(services[2].bitrate, 6000u);
}

TEST(Measuring, AStreamIsUnknownIfItsNetworkIs) {
    std::vector<Service> services{service(5)};
    MeasuredService of_another_network = seen(5, 4000);
    of_another_network.onid = 2;
    MeasuredService without_onid = seen(6, 4000);
    without_onid.onid.reset();
    const Measuring measuring =
        measure(services, {look(60, {of_another_network, without_onid, seen(8, 4000)})});
    EXPECT_TRUE(measuring.measured.empty());
    ASSERT_EQ(measuring.unknown_streams.size(), 1u);
    EXPECT_EQ(measuring.unknown_streams[0].onid, 2);
    ASSERT_EQ(measuring.unknown_services.size(), 2u);
    EXPECT_EQ(measuring.unknown_services[0].sid, 6);
    EXPECT_EQ(measuring.unknown_services[1].sid, 8);
}

TEST(Measuring, WhatDoesNotMatchIsToldOnce) {
    std::vector<Service> services{service(5), service(5)};
    services[1].onid = 2;
    MeasuredService ambiguous = seen(5, 4000);
    ambiguous.onid.reset();
    MeasuredService elsewhere = seen(8, 4000);
    elsewhere.tsid = 8;
    MeasuredService beside = elsewhere;
    beside.sid = 9;
    const Measurement all = look(60, {ambiguous, elsewhere, beside, seen(6, 4000)});
    const Measuring measuring = measure(services, {all, all});
    EXPECT_TRUE(measuring.measured.empty());
    ASSERT_EQ(measuring.ambiguous_services.size(), 1u);
    ASSERT_EQ(measuring.unknown_streams.size(), 1u);
    EXPECT_EQ(measuring.unknown_streams[0].tsid, 8);
    EXPECT_EQ(measuring.unknown_streams[0].services, 2u);
    ASSERT_EQ(measuring.unknown_services.size(), 1u);
    EXPECT_EQ(measuring.unknown_services[0].sid, 6);
    EXPECT_EQ(services[0].bitrate, 3500u);
}

} // namespace
} // namespace zarven::tool::measuring_test
