#pragma once

/// Marks what `libdocparser` shows to other components; all else stays hidden.
#define DOCPARSER_API __attribute__((visibility("default")))
