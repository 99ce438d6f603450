#pragma once

#include <string_view>

// The shape of the command reference, as quillet -html writes it and as
// quillet-preview reads it back: both sides take it from here.
namespace quillet::reference {

// The table of contents fragment, beside the topics.
inline constexpr std::string_view kIndexFile = "Commands.fltoc";

// A topic's file is its record's name with this suffix; the index links it
// below the documentation project's content path.
inline constexpr std::string_view kTopicSuffix = ".html";
inline constexpr std::string_view kContentPath = "/Content/orrery_command_reference/";

// The navigation table's placeholders, filled in by the documentation
// project: the previous and the next topic, linked as their files would be.
inline constexpr std::string_view kPreviousPlaceholder = "PREV_KEYWORD";
inline constexpr std::string_view kNextPlaceholder = "NEXT_KEYWORD";
inline constexpr std::string_view kPreviousLink = "PREV_KEYWORD.html";
inline constexpr std::string_view kNextLink = "NEXT_KEYWORD.html";
static_assert(kPreviousLink.starts_with(kPreviousPlaceholder) &&
              kPreviousLink.substr(kPreviousPlaceholder.size()) == kTopicSuffix);
static_assert(kNextLink.starts_with(kNextPlaceholder) && kNextLink.substr(kNextPlaceholder.size()) == kTopicSuffix);

// The navigation's link to the manual's own contents, and the manual's title.
inline constexpr std::string_view kContentsLink = "orrery_command_referenceTOC.htm";
inline constexpr std::string_view kManualTitle = "Orrery Command Reference Manual";

}  // namespace quillet::reference
