// Colours change from stream to stream and patterns when all colours are used up, so that few streams are
// plain.

#include "report/stream_marks.h"

namespace zarven::tool {

namespace {

void note(std::set<Stream>& streams, const std::vector<ServiceResult>& services) {
    for (const ServiceResult& service : services)
        streams.insert(service.stream);
}

std::set<Stream> streams_on(const std::vector<ModuleResult>& modules) {
    std::set<Stream> streams;
    for (const ModuleResult& module : modules) {
        for (const InputResult& input : module.inputs) {
            if (input.is_tuned)
                streams.insert(input.stream);
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
    std::set<Stream> others;
    for (const StreamResult& stream : result.left_out) {
        others.insert(stream.stream);
        note(others, stream.services);
    }
    note(others, result.clones_waiting);
    note(others, result.neither);
    append(others);
}

/// Those that have no mark yet.
void StreamMarks::append(const std::set<Stream>& streams) {
    for (const Stream stream : streams)
        if (place_of_.insert({stream, marks_.size()}).second)
            marks_.push_back(stream_mark(stream, marks_.size()));
}

} // namespace zarven::tool
