#include "render/paper/PictureLibrary.h"

#include "loading/Loading.h"

namespace render {

const PictureFunctions& pictureLibrary()
{
    static const auto& library =
        loading::functionsOf<PictureFunctions>("libpetal-pictures.so", "petalPictureFunctions");
    return library;
}

} // namespace render
