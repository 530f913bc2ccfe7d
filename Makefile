# The two commands a newcomer needs: `make run` and `make test`.
BUILD ?= build
JOBS ?= 2
FUZZ_SECONDS ?= 60
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo

.PHONY: all deps configure build run test bench fuzz clean

all: build

deps:
	./scripts/install-deps

configure: deps
	@if [ ! -f $(BUILD)/build.ninja ]; then cmake -S . -B $(BUILD) -G Ninja $(CMAKE_FLAGS); fi

build: configure
	cmake --build $(BUILD) -j$(JOBS)

run: build
	./scripts/run-app $(BUILD)

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure --timeout 900

bench: build
	./scripts/run-bench $(BUILD)

fuzz: deps
	./scripts/run-fuzz $(FUZZ_SECONDS)

clean:
	rm -rf $(BUILD) build-fuzz
