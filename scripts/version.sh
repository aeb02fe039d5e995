#!/bin/sh
# Prints the version, which stands in include/tRec_Version.h.
sed -n 's/^#define RECALCULO_VERSION_[A-Z]* \([0-9]*\)$/\1/p' "$(dirname "$0")/../include/tRec_Version.h" | paste -sd .
