// Reads the project's own documents.
#pragma once

#include <string>
#include <vector>

/// The lines of a document, whose name is relative to docs/. Throws std::runtime_error if the document is
/// missing.
std::vector<std::string> LinesOfDocument(const std::string &name);

/// The lines between the heading `## title` and the next such heading, and none without that heading.
std::vector<std::string> SectionOf(const std::vector<std::string> &document, const std::string &title);

/// The lines inside the section's fenced blocks.
std::vector<std::string> FencedLines(const std::vector<std::string> &section);
