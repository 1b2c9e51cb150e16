#include "core/FileTypes1.h"

namespace zelto::FileTypes1 {

namespace {

Ref<FileType> pgzipTarFile;

}  // namespace

const Ref<FileType>& gzipTarFile() { return pgzipTarFile; }

void Initialize() {
  pgzipTarFile = RuntimeNewObject<FileType>();
  pgzipTarFile->Name("gzip compressed tar file");
  pgzipTarFile->Extensions("tgz;tar.gz");
  pgzipTarFile->MacType("GZIP");
  pgzipTarFile->MacCreator("????");
  static_cast<void>(String(*pgzipTarFile));  // the conversion registers the type
}

void Finalize() { pgzipTarFile = nullptr; }

}  // namespace zelto::FileTypes1
