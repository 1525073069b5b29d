#pragma once

#include <cstddef>
#include <string>

// The text that the top dictionary of a property list holds under `key`, in UTF-8. Reads the XML
// and the binary form. False, with `value` as it was, for a key that is missing or holds anything
// but a text, and for damaged bytes; of XML, what stands before the damage counts. Time is at most
// the size times the length of the key.
bool bxPropertyListText(const char* bytes, std::size_t size, const char* key, std::string& value);
