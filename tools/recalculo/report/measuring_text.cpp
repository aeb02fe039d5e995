// A message for each stream or service, of a kind that says what has become of it.

#include "report/measuring_text.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/counted.h"
#include "base/utf8.h"

namespace zarven::tool {

namespace {

/// ONID/TSID, or what is known of it.
std::string stream_text(const Unmatched& unmatched) {
    return unmatched.onid ? to_string(Stream{*unmatched.onid, unmatched.tsid})
                          : fmt::format("with TSID {}", unmatched.tsid);
}

std::string service_text(const Unmatched& unmatched) {
    return fmt::format("SID {}{}", unmatched.sid,
                       unmatched.name.empty() ? "" : fmt::format(" \"{}\"", shortened(unmatched.name)));
}

class Messages {
public:
    Messages(const std::vector<MeasuredFile>& files, const std::vector<Service>& services,
             const Measuring& measuring, MessageDigest::Extent extent)
        : files_(files), services_(services), measuring_(measuring), digest_(extent),
          name_(files.size() == 1 ? files.front().file : counted(files.size(), "file")) {}

    std::vector<std::string> lines() && {
        add_unreadable();
        add_unmatched();
        add_streams();
        add_services(measuring_.without_rate, "the rate is 0: what stood there is kept");
        add_services(measuring_.without_name, "the name is \"(unknown)\": what stood there is kept");
        add_services(measuring_.of_other_kind, "it is of another kind than was told: changed");
        add_services(measuring_.clear_at_the_moment,
                     "it has ECMs and was clear at that moment: still to be descrambled");
        add_services(measuring_.clear, "it was clear and has no ECMs: still to be descrambled");
        add_services(measuring_.not_descrambled, "it was scrambled: still not to be descrambled");
        add_services(measuring_.without_pids, "it was scrambled, without a number of scrambled PIDs: "
                                              "the CA PIDs are kept");
        std::vector<std::string> lines = digest_.lines();
        lines.push_back(summary());
        return lines;
    }

private:
    void add(const std::string& kind, const std::string& what) {
        digest_.add(name_, kind, fmt::format("{}: {}", name_, what));
    }

    void add_unreadable() {
        for (const MeasuredFile& file : files_)
            for (const std::string& message : file.unreadable)
                digest_.add(file.file, "lines that cannot be read", message);
    }

    void add_unmatched() {
        for (const Unmatched& stream : measuring_.unknown_streams)
            add("streams that the head-end does not have",
                fmt::format("stream {}: the head-end does not have it: {} passed over", stream_text(stream),
                            counted(stream.services, "service")));
        for (const Unmatched& service : measuring_.unknown_services)
            add("services that the head-end does not have",
                fmt::format("{} of stream {}: the head-end does not have it: passed over",
                            service_text(service), stream_text(service)));
        for (const Unmatched& service : measuring_.ambiguous_services)
            add("services without ONID that several networks have",
                fmt::format("{} of stream {}: several networks have it, and no ONID is told: passed over",
                            service_text(service), stream_text(service)));
    }

    void add_streams() {
        for (const ShortLook& look : measuring_.short_looks)
            add("streams that were looked at for less than 10 s",
                fmt::format(
                    "stream {}: looked at for {:.3g} s in all, which is too short for a peak: measure "
                    "for 10 s at least",
                    to_string(look.stream), look.seconds));
        for (const SharedOut& held : measuring_.held)
            add("streams that have less for their services than these take",
                fmt::format("stream {}: its services take {} kbit/s, it has {} for them: shared out",
                            to_string(held.stream), held.estimated, held.carried));
    }

    void add_services(const ServicePlaces& places, const std::string& what) {
        for (const std::size_t place : places) {
            const Service& service = services_[place];
            add("services: " + what, fmt::format("\"{}\" (SID {} of stream {}): {}", shortened(service.name),
                                                 service.osid, to_string(stream_of(service)), what));
        }
    }

    std::string summary() const {
        const auto estimated = std::count_if(services_.begin(), services_.end(),
                                             [](const Service& service) { return !service.measured; });
        return fmt::format("{}: {} measured{}; of {} in the head-end, {} estimated", name_,
                           counted(measuring_.measured.size(), "service"),
                           measuring_.measured_once == 0
                               ? ""
                               : fmt::format(", {} of them once, so that the mean stands for the peak",
                                             measuring_.measured_once),
                           services_.size(), estimated);
    }

    const std::vector<MeasuredFile>& files_;
    const std::vector<Service>& services_;
    const Measuring& measuring_;
    MessageDigest digest_;
    std::string name_;
};

} // namespace

std::vector<std::string> measuring_messages(const std::vector<MeasuredFile>& files,
                                            const std::vector<Service>& services, const Measuring& measuring,
                                            MessageDigest::Extent extent) {
    return Messages(files, services, measuring, extent).lines();
}

} // namespace zarven::tool
