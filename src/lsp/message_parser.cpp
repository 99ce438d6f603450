#include "lsp/message_parser.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace quillet::lsp {

namespace {

using nlohmann::json;

class MovingBuilder final : public json::json_sax_t {
public:
    explicit MovingBuilder(json& root) : root_(root) {}

    bool null() override { return place(nullptr); }
    bool boolean(bool value) override { return place(value); }
    bool number_integer(number_integer_t value) override { return place(value); }
    bool number_unsigned(number_unsigned_t value) override { return place(value); }
    bool number_float(number_float_t value, const string_t&) override { return place(value); }
    bool string(string_t& value) override { return place(std::move(value)); }
    bool binary(binary_t& value) override { return place(json::binary(std::move(value))); }
    bool start_object(std::size_t) override { return open(json::object()); }
    bool key(string_t& name) override {
        key_ = std::move(name);
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(json::array()); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

private:
    // Where a value goes: the root, the end of the open array, or the open
    // object under the last key. Only the innermost open value grows, so the
    // pointers to the ones around it stay valid.
    json& slot() {
        if (open_.empty()) return root_;
        json& parent = *open_.back();
        if (parent.is_array()) return parent.emplace_back();
        return parent[key_];
    }
    bool place(json value) {
        slot() = std::move(value);
        return true;
    }
    bool open(json value) {
        json& at = slot();
        at = std::move(value);
        open_.push_back(&at);
        return true;
    }
    bool close() {
        open_.pop_back();
        return true;
    }

    json& root_;
    std::vector<json*> open_;
    string_t key_;
};

// Walks a body's bytes for the parser, which never reads one twice, and
// lets go of each megabyte's pages once it has gone past them. The parser
// keeps the string it is reading and that string's raw bytes as it goes:
// with the whole body beside them, a large document's message would take
// three times its size.
class ReleasingIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    explicit ReleasingIterator(const char* at) : at_(at), released_(pageAbove(at)) {}

    reference operator*() const { return *at_; }
    ReleasingIterator& operator++() {
        if ((reinterpret_cast<std::uintptr_t>(++at_) & (kStep - 1)) == 0) release();
        return *this;
    }
    ReleasingIterator operator++(int) {
        ReleasingIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const ReleasingIterator& other) const { return at_ == other.at_; }

private:
    static constexpr std::uintptr_t kStep = std::uintptr_t{1} << 20;

    static std::uintptr_t pageAbove(const char* at) {
        const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
        return (reinterpret_cast<std::uintptr_t>(at) + page - 1) / page * page;
    }
    // Only whole pages of the body behind the parser: the allocator's own
    // bytes before the body's first page are left alone.
    void release() {
        const auto to = reinterpret_cast<std::uintptr_t>(at_);
        if (to > released_) ::madvise(reinterpret_cast<void*>(released_), to - released_, MADV_DONTNEED);
        released_ = to;
    }

    const char* at_;
    std::uintptr_t released_;
};

}  // namespace

bool parseMessage(std::string body, json& message) {
    MovingBuilder builder(message);
    const char* data = body.data();
    return json::sax_parse(ReleasingIterator(data), ReleasingIterator(data + body.size()), &builder);
}

}  // namespace quillet::lsp
