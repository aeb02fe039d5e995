// DocumentFailure: what is wrong with a document, with its place as data, so that whoever has had a hand in
// the document can tell whether the complaint is about that.

#ifndef RECALCULO_DOCUMENT_FAILURE_H
#define RECALCULO_DOCUMENT_FAILURE_H

#include <string>

#include "base/failure.h"

namespace zarven::tool {

struct Misfit {
    std::string file;
    /// JSON pointer of the value or, of a member that is missing, of the object that lacks it; empty for the
    /// top level.
    std::string place;
    std::string found;
    std::string expected;

    /// FILE: PLACE: found ..., expected ...
    std::string message() const;
    /// It is about what stands at a JSON pointer other than the top level, or within it.
    bool is_within(const std::string& pointer) const;
};

struct DocumentFailure : Failure {
    /// `prefix` stands before the message.
    explicit DocumentFailure(Misfit what_is_wrong, const std::string& prefix = "")
        : Failure(prefix + what_is_wrong.message()), misfit(std::move(what_is_wrong)) {}

    Misfit misfit;
};

} // namespace zarven::tool

#endif
