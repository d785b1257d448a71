#include "model/uInflate.h"

std::unique_ptr<IInflate> MakeFastInflate() {
  return nullptr;
}
