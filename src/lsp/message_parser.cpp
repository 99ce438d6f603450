#include "lsp/message_parser.h"

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

}  // namespace

bool parseMessage(std::string_view body, json& message) {
    MovingBuilder builder(message);
    return json::sax_parse(body, &builder);
}

}  // namespace quillet::lsp
