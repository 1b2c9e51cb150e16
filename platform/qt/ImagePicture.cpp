#include "platform/qt/ImagePicture.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

#include "platform/Toolkit.h"
#include "platform/qt/Text.h"

namespace zelto {

namespace {

class ImagePicture : public Picture {
 public:
  QImage Image;

  Ref<Picture> Mask(bool create) override {
    if (!mMask && create) {
      mMask = RuntimeNewObject<ImagePicture>();
      mMask->Image = QImage(Image.size(), QImage::Format_RGB32);
      mMask->Image.fill(Qt::black);
    }
    return mMask;
  }
  Ref<class Graphics> Graphics() override;

  QImage Masked() const {
    QImage masked = Image.convertToFormat(QImage::Format_ARGB32);
    if (!mMask) return masked;
    QImage alpha = mMask->Image.convertToFormat(QImage::Format_Grayscale8);
    alpha.invertPixels();
    masked.setAlphaChannel(alpha);
    return masked;
  }

 private:
  Ref<ImagePicture> mMask;
};

class ImageGraphics : public Graphics {
 public:
  Ref<ImagePicture> Target;

  void DrawPicture(const Ref<Picture>& picture, Int32 x, Int32 y, Int32 width, Int32 height,
                   Int32 sourceX, Int32 sourceY, Int32 sourceWidth, Int32 sourceHeight) override {
    if (!picture) return;
    const QImage& image = RuntimeCheckCast<ImagePicture>(picture)->Image;
    const auto size = [&](Int32 w, Int32 h) {
      return QSize(w == OwnSize ? image.width() : w, h == OwnSize ? image.height() : h);
    };
    QPainter(&Target->Image)
        .drawImage(QRect(QPoint(x, y), size(width, height)), image,
                   QRect(QPoint(sourceX, sourceY), size(sourceWidth, sourceHeight)));
  }
};

Ref<class Graphics> ImagePicture::Graphics() {
  auto graphics = RuntimeNewObject<ImageGraphics>();
  graphics->Target = Ref<ImagePicture>(this);
  return graphics;
}

}  // namespace

QImage MaskedImage(const Picture& picture) {
  return dynamic_cast<const ImagePicture&>(picture).Masked();
}

Ref<Picture> LoadPicture(const String& path) {
  QFile file(ToDisplayText(path));
  if (!file.open(QIODevice::ReadOnly)) return nullptr;
  // The extension selects the format. Detection would load Qt's plug-ins of all formats.
  QImageReader reader(&file, QFileInfo(file).suffix().toLatin1().toLower());
  reader.setAutoDetectImageFormat(false);
  const QImage image = reader.read();
  if (image.isNull()) return nullptr;
  auto picture = RuntimeNewObject<ImagePicture>();
  // QPainter draws on images of this pixel format.
  picture->Image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  return picture;
}

}  // namespace zelto
