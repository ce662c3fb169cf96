#include "support/SceneText.h"

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoNode.h>

#include <cstdlib>
#include <sstream>

namespace
{

std::string withoutFirstAndBlankLines(std::string const& text)
{
    std::string result;
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line))
        if (!line.empty())
            result += line + '\n';
    return result;
}

} // namespace

std::string writtenScene(SoNode* root, bool isBinary)
{
    SoOutput output;
    std::size_t const firstGuess = 64 * 1024;
    output.setBuffer(std::malloc(firstGuess), firstGuess, std::realloc);
    output.setBinary(isBinary ? TRUE : FALSE);
    root->ref();
    SoWriteAction(&output).apply(root);
    root->unrefNoDelete();
    void* buffer = nullptr;
    std::size_t size = 0;
    output.getBuffer(buffer, size);
    std::string written(static_cast<char const*>(buffer), size);
    std::free(buffer);
    return written;
}

std::string sceneText(SoNode* root)
{
    return withoutFirstAndBlankLines(writtenScene(root, false));
}
