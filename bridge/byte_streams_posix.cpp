#include "bridge/byte_streams.h"

namespace vek::bridge {

void UseByteStreams() {}

}  // namespace vek::bridge
