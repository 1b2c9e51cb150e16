#include "app/Sequence.h"
#include "platform/Application.h"

int main() {
  zelto::RuntimeInit();
  zelto::initialize();
  zelto::Main();
  zelto::finalize();
  return zelto::RuntimeExit();
}
