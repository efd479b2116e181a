# The two set-up commands: `make run` and `make test`. Both install what is missing first.
BUILD ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo
ifeq ($(CI),true)
CMAKE_FLAGS += -DTALLYVIEW_WERROR=ON
endif

.PHONY: all deps configure build run test bench format clean screenshots

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -G Ninja $(CMAKE_FLAGS) > /dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

run: build
	@scripts/run-sample.sh $(BUILD)

test: build
	@cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# The benchmarks, each figure a ratio to a baseline timed in the same run; the desktop's end with
# the table of figures against their budgets (docs/PERFORMANCE.md), then the peak memory. `make
# bench-short` runs every benchmark briefly, as CI does, and enforces only the memory budget.
bench: build
	@$(BUILD)/bench/tallyview_bench $(BENCH_ARGS)
	@status=0; \
	$(BUILD)/bench/tallyview_bench_desktop --benchmark_repetitions=3 \
		--benchmark_report_aggregates_only=true $(BENCH_ARGS) || status=1; \
	scripts/measure-memory.sh $(BUILD) || status=1; \
	exit $$status

.PHONY: bench-short
bench-short: build
	@$(BUILD)/bench/tallyview_bench --benchmark_min_time=0.01
	@$(BUILD)/bench/tallyview_bench_desktop --short
	@scripts/measure-memory.sh $(BUILD)

screenshots: build
	@scripts/screenshots.sh $(BUILD)

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf $(BUILD)

# The sanitizer build (clang, AddressSanitizer and UndefinedBehaviorSanitizer): `make
# test-sanitize` runs the whole test suite and every fuzz target's corpus in it; `make fuzz
# FUZZ_SECONDS=N` fuzzes each target for N seconds. docs/RELIABILITY.md tells the rest.
.PHONY: sanitize-build test-sanitize fuzz
SANITIZE_BUILD ?= build-sanitize
FUZZ_SECONDS ?= 60
SANITIZER_ENV = ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:check_initialization_order=1 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/tests/sanitize/lsan-qt.supp:print_suppressions=0 \
	UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

sanitize-build: deps
	@CC=clang CXX=clang++ cmake -S . -B $(SANITIZE_BUILD) -G Ninja $(CMAKE_FLAGS) \
		-DTALLYVIEW_SANITIZE=ON -DTALLYVIEW_BENCH=OFF > /dev/null
	@cmake --build $(SANITIZE_BUILD) -j $(JOBS)

test-sanitize: sanitize-build
	@cd $(SANITIZE_BUILD) && $(SANITIZER_ENV) ctest --output-on-failure -j $(JOBS)

fuzz: sanitize-build
	@$(SANITIZER_ENV) scripts/fuzz.sh $(SANITIZE_BUILD) $(FUZZ_SECONDS) $(JOBS)

# The Debian package, built from debian/ by dpkg-buildpackage: `make package` builds
# $(BUILD)/tallyview_VERSION_ARCH.deb and checks it with lintian; `make package-test` installs it
# on this machine with apt, checks it and removes it, then installs it into a fresh minimal
# Debian 12 root made with debootstrap and runs it there (root or sudo).
.PHONY: package package-test
package: deps
	@scripts/build-package.sh $(BUILD)

package-test: package
	@scripts/test-package.sh $(BUILD)
	@scripts/test-package-clean-root.sh $(BUILD)

# The windows at 100 % and at 200 % (QT_SCALE_FACTOR=2), to look at side by side:
# shots/scale-100 and shots/scale-200.
.PHONY: screenshots-scaled
screenshots-scaled: build
	@SHOTS=shots/scale-100 QT_SCALE_FACTOR=1 scripts/screenshots.sh $(BUILD)
	@SHOTS=shots/scale-200 QT_SCALE_FACTOR=2 scripts/screenshots.sh $(BUILD)
