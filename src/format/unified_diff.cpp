#include "format/unified_diff.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace quillet::format {

namespace {

constexpr std::size_t kContext = 3;

struct Lines {
    std::vector<std::string_view> text;  // without their line ends
    bool lastEnded = true;               // the last line has its line end
};

Lines splitLines(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.text.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            lines.lastEnded = false;
            break;
        }
        text.remove_prefix(end + 1);
    }
    return lines;
}

enum class Op : std::uint8_t { Same, Removed, Added };
struct Step {
    Op op;
    std::size_t line;  // 0-based, in `before` for Same and Removed, in `after` for Added
};

// The steps from `before` to `after`: a line of `after` that came from a
// line of `before` and reads the same is kept, any other is added, and the
// lines of `before` passed over are removed.
std::vector<Step> pairLines(const Lines& before, const Lines& after, const std::vector<int>& origins) {
    std::vector<Step> steps;
    std::size_t next = 0;
    auto same = [&](std::size_t old, std::size_t now) {
        const bool endsAlike = old + 1 < before.text.size() || before.lastEnded;
        return endsAlike && before.text[old] == after.text[now];
    };
    for (std::size_t now = 0; now < after.text.size(); ++now) {
        const std::size_t origin = now < origins.size() ? static_cast<std::size_t>(origins[now]) : 0;
        if (origin == 0 || origin > before.text.size() || origin <= next) {
            steps.push_back({Op::Added, now});
            continue;
        }
        while (next + 1 < origin) steps.push_back({Op::Removed, next++});
        if (same(next, now)) {
            steps.push_back({Op::Same, next++});
        } else {
            steps.push_back({Op::Removed, next++});
            steps.push_back({Op::Added, now});
        }
    }
    while (next < before.text.size()) steps.push_back({Op::Removed, next++});
    return steps;
}

// "start,count" of a hunk side; a side with one line shows the start only,
// an empty side the line before it.
std::string range(std::size_t first, std::size_t count) {
    if (count == 1) return std::to_string(first + 1);
    return std::to_string(count == 0 ? first : first + 1) + ',' + std::to_string(count);
}

}  // namespace

void writeUnifiedDiff(std::ostream& out, std::string_view name, std::string_view before, std::string_view after,
                      const std::vector<int>& origins) {
    const Lines old = splitLines(before);
    const Lines now = splitLines(after);
    const std::vector<Step> steps = pairLines(old, now, origins);
    bool headerWritten = false;
    std::size_t i = 0;
    // Where each step's lines stand on both sides.
    std::vector<std::size_t> oldAt(steps.size() + 1);
    std::vector<std::size_t> newAt(steps.size() + 1);
    for (std::size_t s = 0; s < steps.size(); ++s) {
        oldAt[s + 1] = oldAt[s] + (steps[s].op != Op::Added ? 1 : 0);
        newAt[s + 1] = newAt[s] + (steps[s].op != Op::Removed ? 1 : 0);
    }
    while (i < steps.size()) {
        while (i < steps.size() && steps[i].op == Op::Same) ++i;
        if (i == steps.size()) break;
        // A hunk: the changes that lie at most twice the context apart, with the context around them.
        const std::size_t begin = i > kContext ? i - kContext : 0;
        std::size_t end = i;
        for (std::size_t same = 0; end < steps.size(); ++end) {
            same = steps[end].op == Op::Same ? same + 1 : 0;
            if (same > 2 * kContext) break;
        }
        // Back to the last change, plus the context after it.
        while (end > i && steps[end - 1].op == Op::Same) --end;
        end = std::min(steps.size(), end + kContext);

        if (!headerWritten) {
            out << "--- " << name << "\n+++ " << name << '\n';
            headerWritten = true;
        }
        out << "@@ -" << range(oldAt[begin], oldAt[end] - oldAt[begin]) << " +"
            << range(newAt[begin], newAt[end] - newAt[begin]) << " @@\n";
        auto writeOld = [&](char mark, std::size_t line) {
            out << mark << old.text[line] << '\n';
            if (line + 1 == old.text.size() && !old.lastEnded) out << "\\ No newline at end of file\n";
        };
        // Within a run of changes the removed lines come first.
        for (std::size_t s = begin; s < end;) {
            if (steps[s].op == Op::Same) {
                writeOld(' ', steps[s++].line);
                continue;
            }
            std::size_t runEnd = s;
            while (runEnd < end && steps[runEnd].op != Op::Same) ++runEnd;
            for (std::size_t r = s; r < runEnd; ++r)
                if (steps[r].op == Op::Removed) writeOld('-', steps[r].line);
            for (std::size_t r = s; r < runEnd; ++r)
                if (steps[r].op == Op::Added) out << '+' << now.text[steps[r].line] << '\n';
            s = runEnd;
        }
        i = end;
    }
}

}  // namespace quillet::format
