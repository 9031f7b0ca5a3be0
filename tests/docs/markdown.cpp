// Reads the project's own documents.
#include "tests/docs/markdown.h"

#include <fstream>
#include <stdexcept>

std::vector<std::string> LinesOfDocument(const std::string &name)
{
    const std::string path = std::string(DOCS_PATH) + "/" + name;
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> SectionOf(const std::vector<std::string> &document, const std::string &title)
{
    std::vector<std::string> section;
    bool isInside = false;
    for (const std::string &line : document) {
        if (line.rfind("## ", 0) == 0)
            isInside = line == "## " + title;
        else if (isInside)
            section.push_back(line);
    }
    return section;
}

std::vector<std::string> FencedLines(const std::vector<std::string> &section)
{
    std::vector<std::string> fenced;
    bool isInside = false;
    for (const std::string &line : section) {
        if (line.rfind("```", 0) == 0)
            isInside = !isInside;
        else if (isInside)
            fenced.push_back(line);
    }
    return fenced;
}
