#include "platform/qt/ImagePicture.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
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
      mMask->Image.setDevicePixelRatio(Image.devicePixelRatio());
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
    masked.setDevicePixelRatio(1);  // else setAlphaChannel enlarges the mask
    masked.setAlphaChannel(alpha);
    masked.setDevicePixelRatio(Image.devicePixelRatio());
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
    const QSizeF own = image.deviceIndependentSize();
    const auto size = [&](Int32 w, Int32 h) {
      return QSizeF(w == OwnSize ? own.width() : w, h == OwnSize ? own.height() : h);
    };
    const double ratio = image.devicePixelRatio();  // a source is counted in pixels of the image
    QPainter(&Target->Image)
        .drawImage(
            QRectF(QPointF(x, y), size(width, height)), image,
            QRectF(QPointF(sourceX, sourceY) * ratio, size(sourceWidth, sourceHeight) * ratio));
  }
};

Ref<class Graphics> ImagePicture::Graphics() {
  auto graphics = RuntimeNewObject<ImageGraphics>();
  graphics->Target = Ref<ImagePicture>(this);
  return graphics;
}

// The extension selects the format. Detection would load Qt's plug-ins of all formats.
QImage Read(const QFileInfo& info) {
  QFile file(info.filePath());
  if (!file.open(QIODevice::ReadOnly)) return {};
  QImageReader reader(&file, info.suffix().toLatin1().toLower());
  reader.setAutoDetectImageFormat(false);
  return reader.read();
}

// Replaces the image by that of twice the size beside the file, if there is one.
void Sharpen(QImage& image, const QFileInfo& file) {
  const QString name = file.completeBaseName() + "@2x." + file.suffix();
  QImage large = Read(QFileInfo(file.dir(), name));
  if (large.size() != image.size() * 2) return;
  large.setDevicePixelRatio(2);
  image = large;
}

}  // namespace

QImage MaskedImage(const Picture& picture) {
  return dynamic_cast<const ImagePicture&>(picture).Masked();
}

Ref<Picture> LoadPicture(const String& path) {
  const QFileInfo file(ToDisplayText(path));
  QImage image = Read(file);
  if (image.isNull()) return nullptr;
  if (qApp->devicePixelRatio() > 1) Sharpen(image, file);
  auto picture = RuntimeNewObject<ImagePicture>();
  // QPainter draws on images of this pixel format.
  picture->Image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  return picture;
}

}  // namespace zelto
