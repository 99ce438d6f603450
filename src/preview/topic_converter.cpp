#include "preview/topic_converter.h"

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <optional>

#include "docgen/reference_format.h"
#include "preview/diagnostic.h"
#include "preview/html_text.h"
#include "preview/xml_error.h"

namespace quillet::preview {

namespace {

using reference::kTopicSuffix;

constexpr std::array<std::string_view, 14> kVoidElements = {
    "area", "base", "br", "col", "embed", "hr", "img", "input", "link", "meta", "param", "source", "track", "wbr"};

bool isVoid(std::string_view name) {
    return std::find(kVoidElements.begin(), kVoidElements.end(), name) != kVoidElements.end();
}

bool isMadCap(std::string_view name) { return name.starts_with("MadCap:"); }

bool isCrossReference(pugi::xml_node node) { return std::string_view(node.name()) == "MadCap:xref"; }

bool isLink(pugi::xml_node node) {
    return isCrossReference(node) || (std::string_view(node.name()) == "a" && node.attribute("href"));
}

class TopicWriter {
public:
    TopicWriter(const SiteLayout& layout, std::size_t topic)
        : layout_(layout), topic_(topic), toTop_(layout.toTop(topic)) {}

    ConvertedTopic convert(pugi::xml_node body) {
        for (pugi::xml_node at = body.first_child(); at && at != body;) {
            if (open(at)) {
                if (at.first_child()) {
                    at = at.first_child();
                    continue;
                }
                close(at);
            }
            while (at != body && !at.next_sibling()) {
                at = at.parent();
                if (at != body) close(at);
            }
            if (at != body) at = at.next_sibling();
        }
        return std::move(result_);
    }

private:
    // Writes what comes before the node's children; false when they are not
    // to be written (nor the node's close).
    bool open(pugi::xml_node node) {
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            appendText(result_.body, node.value());
            if (capturing_) capture(node.value());
            return false;
        }
        if (node.type() != pugi::node_element) return false;
        const std::string_view name = node.name();
        if (isLink(node)) return openLink(node);
        // Concepts are index terms: they never show, on screen or in print.
        if (name == "MadCap:concept") return false;
        if (isMadCap(name)) return true;
        if (name == "dt") startCapture(node);
        if (holdsDeadNavigation(node)) return false;
        openTag(node, name);
        return true;
    }

    void close(pugi::xml_node node) {
        if (node == capturing_) {
            if (!captured_.empty()) result_.terms.push_back(std::move(captured_));
            captured_.clear();
            capturing_ = pugi::xml_node();
        }
        const std::string_view name = node.name();
        if (isCrossReference(node)) {
            result_.body += "</a>";
        } else if (!isMadCap(name) && !isVoid(name)) {
            result_.body += "</";
            result_.body += name;
            result_.body += '>';
        }
    }

    // The neighbour that a navigation placeholder stands for, if any.
    std::optional<std::optional<std::size_t>> neighbour(pugi::xml_node link) const {
        if (!isCrossReference(link)) return std::nullopt;
        const std::string_view href = link.attribute("href").value();
        if (href == reference::kPreviousLink) return topic_ > 0 ? std::optional(topic_ - 1) : std::nullopt;
        if (href == reference::kNextLink) return topic_ + 1 < layout_.size() ? std::optional(topic_ + 1) : std::nullopt;
        return std::nullopt;
    }

    bool isDeadNavigation(pugi::xml_node node) const {
        const auto target = neighbour(node);
        return target && !*target;
    }

    // The first topic has no previous one and the last no next one: their
    // placeholder goes, with the span that holds it and its arrow.
    bool holdsDeadNavigation(pugi::xml_node node) const {
        if (std::string_view(node.name()) != "span") return false;
        for (const pugi::xml_node child : node.children())
            if (isDeadNavigation(child)) return true;
        return false;
    }

    bool openLink(pugi::xml_node link) {
        const std::string_view href = link.attribute("href").value();
        if (const auto target = neighbour(link)) {
            if (!*target) return false;
            openTag(link, "a", layout_.topicHref(toTop_, **target));
            appendText(result_.body, layout_.entry(**target).title);
            result_.body += "</a>";
            return false;
        }
        if (href == reference::kContentsLink) {
            // Out of the frame of index.html when the topic is shown there.
            openTag(link, "a", toTop_ + "index.html", " target=\"_top\"");
            return true;
        }
        std::optional<std::size_t> target;
        if (href.ends_with(kTopicSuffix)) target = layout_.find(href.substr(0, href.size() - kTopicSuffix.size()));
        if (target) {
            result_.terms.push_back(layout_.entry(*target).title);
            openTag(link, "a", layout_.topicHref(toTop_, *target));
        } else {
            // A topic the reference does not hold (that of an undocumented
            // keyword): the text stays, the link goes.
            startCapture(link);
            openTag(link, "a", std::nullopt);
        }
        return true;
    }

    // A term is the text of an element, blanks collapsed, gathered while its
    // content is written: the walk has no recursion, as nesting depth is the
    // input's to choose, and an element inside one being captured is part of
    // its text.
    void startCapture(pugi::xml_node node) {
        if (!capturing_) {
            capturing_ = node;
            blank_ = false;
        }
    }

    void capture(std::string_view text) {
        for (const char c : text) {
            const bool space = c == ' ' || c == '\t' || c == '\n' || c == '\r';
            if (!space && blank_ && !captured_.empty()) captured_ += ' ';
            if (!space) captured_ += c;
            blank_ = space;
        }
    }

    // Writes the start tag with the node's attributes, less the MadCap ones
    // (screen-only and print-only conditions become classes that the
    // stylesheet honours) and, for links, less the original target; then the
    // new target, if any, and the given extra attributes.
    void openTag(pugi::xml_node node, std::string_view name, std::optional<std::string> href = std::nullopt,
                 std::string_view extraAttributes = {}) {
        const bool link = isLink(node);
        std::string conditionClass;
        const std::string_view conditions = node.attribute("MadCap:conditions").value();
        if (conditions.find(".ScreenOnly") != std::string_view::npos) conditionClass = "screen-only";
        if (conditions.find(".PrintOnly") != std::string_view::npos) conditionClass = "print-only";

        std::string& out = result_.body;
        out += '<';
        out += name;
        for (const pugi::xml_attribute attribute : node.attributes()) {
            const std::string_view key = attribute.name();
            if (isMadCap(key) || key == "xmlns" || key.starts_with("xmlns:") || (link && key == "href")) continue;
            out += ' ';
            out += key;
            out += "=\"";
            appendAttribute(out, attribute.value());
            if (key == "class" && !conditionClass.empty()) {
                out += ' ';
                out += conditionClass;
                conditionClass.clear();
            }
            out += '"';
        }
        if (!conditionClass.empty()) out += " class=\"" + conditionClass + "\"";
        if (href) {
            out += " href=\"";
            appendAttribute(out, *href);
            out += '"';
        }
        out += extraAttributes;
        out += '>';
    }

    const SiteLayout& layout_;
    std::size_t topic_;
    std::string toTop_;
    ConvertedTopic result_;
    pugi::xml_node capturing_;
    std::string captured_;
    bool blank_ = false;
};

}  // namespace

ConvertedTopic convertTopic(std::string_view bytes, const std::string& file, const SiteLayout& layout,
                            std::size_t topic) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(
        bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata, pugi::encoding_utf8);
    if (!parsed) throw notWellFormed(file, bytes, parsed);
    const pugi::xml_node html = document.document_element();
    if (std::string_view(html.name()) != "html")
        throw PreviewError(file, "the topic's root element is not <html>", bytes,
                           html ? static_cast<std::size_t>(html.offset_debug()) - 1 : 0);
    const pugi::xml_node body = html.child("body");
    if (!body)
        throw PreviewError(file, "the topic has no <body>", bytes, static_cast<std::size_t>(html.offset_debug()) - 1);
    ConvertedTopic converted = TopicWriter(layout, topic).convert(body);
    std::sort(converted.terms.begin(), converted.terms.end());
    converted.terms.erase(std::unique(converted.terms.begin(), converted.terms.end()), converted.terms.end());
    return converted;
}

}  // namespace quillet::preview
