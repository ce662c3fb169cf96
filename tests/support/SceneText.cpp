#include "support/SceneText.h"

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoNode.h>

#include <cstdlib>

std::string sceneText(SoNode* root)
{
    SoOutput output;
    std::size_t const firstGuess = 64 * 1024;
    output.setBuffer(std::malloc(firstGuess), firstGuess, std::realloc);
    root->ref();
    SoWriteAction(&output).apply(root);
    root->unrefNoDelete();
    void* buffer = nullptr;
    std::size_t size = 0;
    output.getBuffer(buffer, size);
    std::string text(static_cast<char const*>(buffer), size);
    std::free(buffer);
    std::size_t const body = text.find_first_not_of('\n', text.find('\n'));
    return body == std::string::npos ? text : text.substr(body);
}
