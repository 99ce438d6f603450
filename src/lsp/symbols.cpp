#include "lsp/requests.h"

namespace quillet::lsp {

namespace {

// Symbol kinds of the protocol.
constexpr int kFunction = 12;
constexpr int kProperty = 7;
constexpr int kEnum = 10;
constexpr int kEnumMember = 22;

// A symbol being built: it grows to the last word that belongs to it.
struct OpenSymbol {
    json symbol;
    std::size_t start = 0;
    std::size_t end = 0;
    bool open = false;
};

class SymbolBuilder {
public:
    // Each keyword and table is written out once it is closed.
    SymbolBuilder(const Analysis& analysis, const TextView& view, std::string& out)
        : analysis_(analysis), view_(view), out_(out) {}

    void build() {
        // Room for what a symbol of a usual name takes, for each word, so
        // that a large answer is not copied as it grows; pages not written
        // to cost nothing.
        out_.reserve(out_.size() + analysis_.words.size() * 64 + 16);
        out_ += '[';
        for (const Word& word : analysis_.words) take(word);
        closeOption();
        closeKeyword();
        closeTable();
        out_ += ']';
    }

private:
    void take(const Word& word) {
        // A lookup table's words end at the next directive; the keyword and
        // option around it go on after it.
        if (const DirectiveSpec* spec = word.spec()) {
            closeTable();
            switch (spec->directive) {
            case Directive::KEYWORD:
                closeOption();
                closeKeyword();
                begin(keyword_, word, kFunction);
                return;
            case Directive::OPTION:
                closeOption();
                begin(option_, word, kProperty);
                break;
            case Directive::LOOKUP: begin(table_, word, kEnum); return;
            default: break;
            }
        }
        const std::size_t end = word.offset + word.length;
        if (table_.open) table_.end = end;
        else
            for (OpenSymbol* symbol : {&keyword_, &option_})
                if (symbol->open) symbol->end = end;
        switch (word.role) {
        case WordRole::KeywordName: name(keyword_, word); break;
        case WordRole::KeywordId: detail(keyword_, word); break;
        case WordRole::OptionName: name(option_, word); break;
        case WordRole::OptionId: detail(option_, word); break;
        case WordRole::TableName: name(table_, word); break;
        case WordRole::EntryId: entry_ = {json::object(), word.offset, end, true}; detail(entry_, word); break;
        case WordRole::EntryName:
            if (entry_.open) name(entry_, word);
            break;
        case WordRole::EntryValue:
            if (entry_.open && table_.open && entry_.symbol.contains("name")) {
                entry_.end = end;
                entry_.symbol["kind"] = kEnumMember;
                entry_.symbol["detail"] = entry_.symbol["detail"].get<std::string>() + " = " + analysis_.text(word);
                close(entry_, &table_.symbol["children"]);
            }
            entry_.open = false;
            break;
        default: break;
        }
    }

    void begin(OpenSymbol& symbol, const Word& word, int kind) {
        symbol = {{{"kind", kind}, {"children", json::array()}}, word.offset, word.offset + word.length, true};
    }
    void name(OpenSymbol& symbol, const Word& word) {
        if (!symbol.open || symbol.symbol.contains("name")) return;
        symbol.symbol["name"] = analysis_.text(word);
        symbol.symbol["selectionRange"] = view_.range({word.offset, word.length});
    }
    void detail(OpenSymbol& symbol, const Word& word) {
        if (symbol.open && !symbol.symbol.contains("detail")) symbol.symbol["detail"] = analysis_.text(word);
    }
    // A symbol whose name never came is left out: the protocol needs one.
    // Into its parent's children, or, for none, written out.
    void close(OpenSymbol& symbol, json* into) {
        if (!symbol.open) return;
        symbol.open = false;
        if (!symbol.symbol.contains("name") || symbol.symbol["name"].get_ref<const std::string&>().empty()) return;
        symbol.symbol["range"] = view_.range({symbol.start, symbol.end - symbol.start});
        if (symbol.symbol.contains("children") && symbol.symbol["children"].empty()) symbol.symbol.erase("children");
        if (into != nullptr) {
            into->push_back(std::move(symbol.symbol));
            return;
        }
        if (written_) out_ += ',';
        written_ = true;
        appendJson(out_, symbol.symbol);
    }
    void closeOption() {
        if (keyword_.open) close(option_, &keyword_.symbol["children"]);
        option_.open = false;
    }
    void closeKeyword() { close(keyword_, nullptr); }
    void closeTable() {
        entry_.open = false;
        close(table_, nullptr);
    }

    const Analysis& analysis_;
    const TextView& view_;
    std::string& out_;
    bool written_ = false;  // a symbol, so the next needs a comma
    OpenSymbol keyword_;
    OpenSymbol option_;
    OpenSymbol table_;
    OpenSymbol entry_;
};

}  // namespace

void writeDocumentSymbols(const Analysis& analysis, const TextView& view, std::string& out) {
    SymbolBuilder(analysis, view, out).build();
}

}  // namespace quillet::lsp
