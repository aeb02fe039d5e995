// The engine as the page's worker calls it, with C names and numbers alone: the worker asks for room, writes
// a message there, and reads the answer from where it is told. One question at a time.

#include <cstddef>
#include <exception>
#include <string>

#include <emscripten.h>

#include "questions.h"

namespace {

std::string question;
std::string given;

} // namespace

extern "C" {

// emscripten's C library lacks it, and there is no log of the system.
int setlogmask(int mask);
int setlogmask(int mask) {
    static int in_force = 0xFF;
    const int before = in_force;
    if (mask != 0)
        in_force = mask;
    return before;
}

/// Where a message of that size is to be written.
EMSCRIPTEN_KEEPALIVE char* recalculo_room(std::size_t size) {
    question.assign(size, ' ');
    return question.data();
}

/// Answers the message; the answer is good until the next question. Null for a fault of this program.
EMSCRIPTEN_KEEPALIVE const char* recalculo_answer() {
    using namespace zarven::web;
    try {
        given = bytes_of(answer(message_of(question)));
    } catch (const std::exception& fault) {
        Message message;
        message.head["fault"] = fault.what();
        given = bytes_of(message);
    }
    return given.data();
}

EMSCRIPTEN_KEEPALIVE std::size_t recalculo_answer_size() {
    return given.size();
}

} // extern "C"
