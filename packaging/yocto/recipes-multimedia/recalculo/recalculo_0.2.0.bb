SUMMARY = "Places the television services of a head-end onto its processing modules"
DESCRIPTION = "A library that computes how the television services which a digital head-end receives are placed onto its \
processing modules, within their limits of bitrate, descrambled PIDs and transcoders; and a planner's tool."
HOMEPAGE = "https://recalculo.invalid"
BUGTRACKER = "https://recalculo.invalid/bugs"
SECTION = "libs/multimedia"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=2b4e8c18ea6185793c99095f190282bb"

# Where the tarballs of the releases lie.
RECALCULO_MIRROR ?= "https://recalculo.invalid/releases"
SRC_URI = "${RECALCULO_MIRROR}/${BP}.tar.xz \
           file://run-ptest \
           "
SRC_URI[sha256sum] = "be8771614b9a6444f4ca16b796a9078bd90eed3ecd5cb5a9b8ffb403619e88bb"

inherit cmake pkgconfig ptest

PACKAGECONFIG ??= ""
PACKAGECONFIG[tool] = "-DRECALCULO_TOOL=ON,-DRECALCULO_TOOL=OFF,cli11 fmt mustache nlohmann-json utf8proc"

# The hardening is that of the distribution.
EXTRA_OECMAKE = "-DRECALCULO_DEVELOPER=OFF -DRECALCULO_INSTALL=ON -DRECALCULO_HARDENING=OFF"

do_compile_ptest() {
    for example in embedded_host minimal_caller; do
        ${CXX} ${CXXFLAGS} -std=c++17 -I${S}/include ${S}/examples/$example.cpp ${LDFLAGS} -L${B} -lrecalculo \
            -o ${B}/$example
    done
}

do_install_ptest() {
    install -m 0755 ${B}/embedded_host ${B}/minimal_caller ${D}${PTEST_PATH}
}

PACKAGES =+ "${PN}-tool"
FILES:${PN}-tool = "${bindir}/recalculo ${datadir}/bash-completion ${datadir}/zsh ${datadir}/fish"
ALLOW_EMPTY:${PN}-tool = "1"

BBCLASSEXTEND = "native nativesdk"
