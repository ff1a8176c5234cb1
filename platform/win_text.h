// The Windows halves of the platform services convert text through the COM
// toolkit's one UTF-8 <-> UTF-16 conversion.
#pragma once

#include "win/com/wide_text.h"
