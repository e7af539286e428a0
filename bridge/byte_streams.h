// Standard input and output as bytes, on platforms that would change line ends and end at a control
// character.
#pragma once

namespace vek::bridge {

void UseByteStreams();

}  // namespace vek::bridge
