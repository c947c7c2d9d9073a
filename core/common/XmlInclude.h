#pragma once

// libxml++ 2.6 still declares std::auto_ptr members; silence only that warning for its headers.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <libxml++/document.h>
#include <libxml++/nodes/element.h>
#include <libxml++/nodes/textnode.h>
#include <libxml++/parsers/domparser.h>
#pragma GCC diagnostic pop
