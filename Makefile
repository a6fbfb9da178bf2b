# Vellumo: the commands a person needs. Each does all it takes, from a bare Debian machine on.
#
#   make run           a morning at the practice through the real DLL under Wine, with screenshots
#   make run-native    the same through the native build
#   make norda         the simulated host, for a person at the console
#   make lint          checks layout and code
#   make test          native tests with sanitizers, and the tests of the x64 DLL under Wine, but for the long ones
#   make test-win32    the tests of the x86 DLL under Wine
#   make test-all      all of these and the long ones: what CI runs
#   make dll           the DLLs for 64-bit and 32-bit hosts
#   make package [SIGN_WITH=FILE.p12]
#                      installer, SDK and symbols, in build/package
#   make test-package  installs, upgrades, uses and removes them, under 64-bit and 32-bit Wine
#   make simulate SESSIONS=20000 SEED=1
#                      simulated prescribing sessions against all that can go wrong in one
#   make torture [EVERY=17]
#                      each call of the library to the outside fails in turn, once and for good (or every 17th),
#                      natively and through the x64 DLL
#   make fuzz SECONDS=60
#                      machines look for inputs that break the library, so long for each kind of input
#   make engines       whether both XML engines make the same of thousands of texts, good and bad
#   make bench         how the long jobs compare with bare programs doing the same work
#   make gallery       every window in every state that matters, as pictures on one page: build/gallery/index.html
#   make clean         removes what was built

.PHONY: run run-native norda lint test test-win32 test-all dll package test-package simulate torture fuzz engines bench gallery clean
.DEFAULT_GOAL := run
MAKEFLAGS += --no-print-directory

run:
	@tools/setup
	@tools/morning win64

run-native:
	@tools/setup
	@tools/morning native

norda:
	@tools/setup
	@tools/build --quiet native norda request_templates
	@build/native/norda

lint:
	@tools/setup
	@tools/lint

test:
	@tools/setup test
	@tools/test win64,native -LE long

test-win32:
	@tools/setup win32
	@tools/test win32

test-all:
	@tools/setup test
	@tools/setup win32
	@tools/test win64,win32,native

dll:
	@tools/setup
	@tools/build win64 vellumo_dll
	@tools/build win32 vellumo_dll
	@echo "build/win64/Vellumo.dll, build/win32/Vellumo.dll; the request templates are in templates/"

package:
	@tools/package $(if $(SIGN_WITH),--sign-with $(SIGN_WITH))

test-package:
	@tools/test-package

SESSIONS ?= 20000
SEED ?= 1

simulate:
	@tools/setup
	@tools/simulate --sessions $(SESSIONS) --seed $(SEED)

EVERY ?= 1

torture:
	@tools/setup
	@tools/torture --every $(EVERY)

SECONDS ?= 60

fuzz:
	@tools/setup
	@tools/fuzz --seconds $(SECONDS)

engines:
	@tools/setup engines
	@tools/engines

bench:
	@tools/setup
	@tools/bench

gallery:
	@tools/setup gallery
	@tools/gallery

clean:
	@tools/wine-end --now
	@rm -rf build
