// SPDX-License-Identifier: MIT
// The ids of the forms. They travel as int in requests and events.
#pragma once

namespace lumi {

enum FormId { TopForm = 0, FileForm = 2, ImportForm = 3 };

} // namespace lumi
