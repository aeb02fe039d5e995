// Ctrl-C and the like. Nothing is to be done after them, so nothing unwinds: the process ends where it is,
// after what has been begun is brought to a state that can be left.

#ifndef RECALCULO_INTERRUPTION_H
#define RECALCULO_INTERRUPTION_H

#include <csignal>

namespace zarven::tool::interruption {

/// From now on SIGINT and SIGTERM end the program with 128 + their number, 130 and 143, after a message. One
/// that is ignored at the start stays so, as a shell wants it for a program in the background. A file that
/// becomes larger than it may is a failure to write and no signal, and when memory ends the program does,
/// with a message and exit code 1: much of what would be unwound needs memory itself.
void install();

/// While one is alive, a signal waits for `obey` or the end of the object; the second signal does not. One
/// at a time.
class Deferred {
public:
    Deferred();
    ~Deferred();
    Deferred(const Deferred&) = delete;
    Deferred& operator=(const Deferred&) = delete;
};

/// A signal waits.
bool is_pending();

/// Ends the program if a signal waits.
void obey();

/// No signal by which a person ends a program arrives while one is alive: for the short time in which a file
/// is written.
class Held {
public:
    Held();
    ~Held();
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    sigset_t previous_;
};

/// A file that is to be removed if the program ends before it is whole; null for none.
void file_is_unfinished(const char* path);

/// Whether standard error has a line that is to be erased before the message.
void line_is_drawn(bool drawn);

} // namespace zarven::tool::interruption

#endif
