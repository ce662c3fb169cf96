#include "toolkit/SoSharedTexture.h"

#include "toolkit/SoSilentField.h"

#include <utility>

void SoSharedTexture::setPixels(std::shared_ptr<SoSharedPixels const> pixels)
{
    std::shared_ptr<SoSharedPixels const> const before = std::exchange(kept, std::move(pixels));
    image.enableNotify(FALSE);
    image.setValue(kept->size, kept->components, kept->bytes.data(), SoSFImage::NO_COPY);
    image.enableNotify(TRUE);
    image.setDefault(TRUE); // the name is written, not the pixels
    setReadStatus(1);
}

void SoSharedTexture::nameSilently(SoTexture2& texture, std::string const& name)
{
    if (name.empty())
        return; // as the toolkit, which writes no empty name
    SoSilentField::set(texture.filename, name.c_str());
}
