#pragma once

// The whole public interface of the library in one include. Programs that care about compile time
// include the headers of the subsystems they use instead; docs/architecture.md lists the rooms.

#include "common/analysis_kind.h"
#include "common/app/app.h"
#include "common/convert_error.h"
#include "common/errors.h"
#include "common/export.h"
#include "common/gid.h"
#include "common/message_text.h"
#include "common/meta_enum.h"
#include "common/range_error.h"
#include "common/status.h"
#include "common/str/fill_template.h"
#include "common/str/meta_convert.h"
#include "common/str/number_text.h"
#include "common/str/tokenize.h"
#include "common/sys/command_line.h"
#include "common/sys/debugger.h"
#include "common/sys/dll_border.h"
#include "common/sys/environment.h"
#include "common/sys/floating_point.h"
#include "common/sys/last_error.h"
#include "common/sys/text_encoding.h"
#include "common/system_error.h"
#include "common/undefined.h"
#include "common/version.h"
