#pragma once

/// Marks what `libdocparser` exports; everything else stays hidden.
#define DOCPARSER_API __attribute__((visibility("default")))
