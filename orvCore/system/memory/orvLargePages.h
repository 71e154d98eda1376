// orvCore/system/memory/orvLargePages.h
#pragma once

#include <cstddef>

namespace orv
{

/// Asks the system to back the whole 2 MiB pages inside [data, data + size) with large pages, for large blocks
/// reached at random, where walks of the page tables would otherwise dominate. A hint: it changes no content and no
/// address, and does nothing for blocks smaller than a large page or on systems without such pages. Any thread.
void adviseLargePages(void* data, size_t size);

} // namespace orv
