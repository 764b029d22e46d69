// Search in null-terminated texts.
#pragma once

/// The last occurrence of `needle` in `text`, as a pointer into `text`; null when there is
/// none or either is null. An empty needle is found at the end of the text.
const char* str_LastOccurrence(const char* text, const char* needle);
