#include "toolkit/SoSharedTexture.h"

#include "toolkit/SoSilentField.h"

void SoSharedTexture::share(SbVec2s size, int components, unsigned char const* bytes,
                            std::shared_ptr<void const> owner)
{
    std::shared_ptr<void const> const before = std::exchange(kept, std::move(owner));
    image.enableNotify(FALSE);
    image.setValue(size, components, bytes, SoSFImage::NO_COPY);
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
