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

bench: build
	@$(BUILD)/bench/tallyview_bench $(BENCH_ARGS)

screenshots: build
	@scripts/screenshots.sh $(BUILD)

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf $(BUILD)
