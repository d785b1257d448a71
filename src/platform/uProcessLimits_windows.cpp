#include <io.h>

#include <algorithm>
#include <cstdio>

#include "platform/uProcessLimits.h"

void SurviveFileSizeLimit() {}

void RaiseOpenFileLimit() {
  _setmaxstdio(2048);  // the C library takes no more
}

std::size_t OpenFilesLeft() {
  std::size_t left = 0;
  for (int descriptor = 0; descriptor < _getmaxstdio(); ++descriptor) left += _get_osfhandle(descriptor) == -1 ? 1 : 0;
  return left;
}
