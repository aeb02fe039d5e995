// Messages of which there may be thousands: of each kind a few are told, and how many more there are.

#ifndef RECALCULO_MESSAGE_DIGEST_H
#define RECALCULO_MESSAGE_DIGEST_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zarven::tool {

/// The same for complaints of the same kind: what stands in quotes and what has digits is left away, up to
/// what was expected.
std::string kind_of_complaint(std::string_view complaint);

class MessageDigest {
public:
    static constexpr std::size_t most_of_a_kind = 3;

    enum class Extent { few_of_each, all };

    explicit MessageDigest(Extent extent) : extent_(extent) {}

    /// Messages of one kind and file are counted together.
    void add(const std::string& file, const std::string& kind, std::string message);

    /// Those to be told, in the order in which they came, then the numbers of the others by kind.
    std::vector<std::string> lines() const;

private:
    struct Kind {
        std::string file;
        std::string name;
        std::size_t count = 0;
    };

    Extent extent_;
    std::vector<std::string> told_;
    /// In the order in which they came, and where each stands.
    std::vector<Kind> kinds_;
    std::map<std::pair<std::string, std::string>, std::size_t> places_;
};

/// What an option --verbose says.
inline MessageDigest::Extent extent_of(bool verbose) {
    return verbose ? MessageDigest::Extent::all : MessageDigest::Extent::few_of_each;
}

} // namespace zarven::tool

#endif
