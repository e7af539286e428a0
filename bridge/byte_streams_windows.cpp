#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include "bridge/byte_streams.h"

namespace vek::bridge {

void UseByteStreams() {
  ::_setmode(::_fileno(stdin), _O_BINARY);
  ::_setmode(::_fileno(stdout), _O_BINARY);
}

}  // namespace vek::bridge
