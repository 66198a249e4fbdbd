#pragma once

/// The text that every file begins with: opens the petal file, sets the design's defaults, writes an empty Use Case
/// View and leaves the `Design` object open for the Logical View. It ends without a line end, since every line that
/// follows brings its own.
void writeHeader();

/// The text that every file ends with: an empty Component View, an empty Deployment View and the default property sets
/// of six tools; closes the `Design` object.
void writeFooter();
