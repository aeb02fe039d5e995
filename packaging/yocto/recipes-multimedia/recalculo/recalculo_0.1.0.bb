SUMMARY = "Places the television services of a head-end onto its processing modules"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=2b4e8c18ea6185793c99095f190282bb"

# Where the sources come from is for the layer to say, in a .bbappend or in local.conf.
RECALCULO_URI ??= "git:///srv/git/recalculo.git;protocol=file;branch=main"
SRC_URI = "${RECALCULO_URI}"
SRCREV ??= "${AUTOREV}"
S = "${WORKDIR}/git"

inherit cmake

# The library and nothing else: the tool is for the planner's desk.
EXTRA_OECMAKE = "-DRECALCULO_DEVELOPER=OFF"
