#pragma once

#include "platform/Files.h"
#include "platform/Picture.h"

// The pictures of the windows, loaded on first use and cached. Nil while the file cannot be read.
namespace zelto {

namespace x_MacBGrayscale48x48 {
Ref<Picture> MacBGrayscale48x48();
}
namespace x_LE_48x48_mask {
Ref<Picture> LE_48x48_mask();
}
namespace x_CircleB128x128WhiteBack {
Ref<Picture> CircleB128x128WhiteBack();
}
namespace x_CircleB128x128MaskWhiteBack {
Ref<Picture> CircleB128x128MaskWhiteBack();
}

// The folder of the picture files, next to the folder of the executable.
Ref<FolderItem> GetApplicationBundleResources();

}  // namespace zelto
