#include "model/uInflate.h"

std::unique_ptr<IInflate> MakeFastInflate(TWrapping /*wrapping*/) {
  return nullptr;
}
