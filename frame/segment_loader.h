#pragma once

namespace kwe {

// Builds the document-list handle from the host's command line; names not
// given absolutely are taken in documentDirectory when there is one.
void BuildDocumentList(const char* commandLine, const char* documentDirectory);

}  // namespace kwe
