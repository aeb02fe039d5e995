// Colours change from stream to stream and patterns when all colours are used up, so that few streams are
// plain.

#include "report/stream_marks.h"

namespace zarven::tool {

namespace {

void note(std::set<StreamKey>& streams, const std::vector<ServiceResult>& services) {
    for (const ServiceResult& service : services)
        streams.insert(key_of(service.stream));
}

std::set<StreamKey> streams_on(const std::vector<ModuleResult>& modules) {
    std::set<StreamKey> streams;
    for (const ModuleResult& module : modules) {
        for (const InputResult& input : module.inputs) {
            if (input.is_tuned)
                streams.insert(key_of(input.stream));
            note(streams, input.services);
        }
        for (const OutputResult& output : module.outputs)
            note(streams, output.services);
        note(streams, module.without_input);
    }
    return streams;
}

} // namespace

StreamMark stream_mark(Stream stream, std::size_t place) {
    StreamMark mark;
    mark.stream = stream;
    mark.colour = place % stream_colours;
    mark.pattern = place / stream_colours % stream_patterns;
    constexpr std::size_t letters = 26;
    for (std::size_t rest = place + 1; rest != 0; rest = (rest - 1) / letters)
        mark.code.insert(mark.code.begin(), static_cast<char>('A' + (rest - 1) % letters));
    return mark;
}

StreamMarks::StreamMarks(const Result& result) {
    append(streams_on(result.modules));
    received_ = marks_.size();
    std::set<StreamKey> others;
    for (const StreamResult& stream : result.left_out) {
        others.insert(key_of(stream.stream));
        note(others, stream.services);
    }
    note(others, result.clones_waiting);
    append(others);
}

/// Those that have no mark yet.
void StreamMarks::append(const std::set<StreamKey>& streams) {
    for (const StreamKey& key : streams)
        if (place_of_.insert({key, marks_.size()}).second)
            marks_.push_back(stream_mark({key.first, key.second}, marks_.size()));
}

} // namespace zarven::tool
