# Two commands set up everything on a fresh Debian 12 machine:
#   make run   builds and starts the desktop program
#   make test  builds and runs every test
BUILD_DIR ?= build
BENCH_DIR ?= build-bench
PORTABLE_DIR ?= build-portable
SANITIZE_DIR ?= build-sanitize
FUZZ_DIR ?= build-fuzz
# How long `make fuzz` runs each fuzz target, in seconds.
FUZZ_SECONDS ?= 60
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=

.PHONY: all deps configure build run test sanitize-test fuzz bench format screenshot package portable clean

all: build

deps:
	./scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKELVORA_WERROR=ON $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	$(BUILD_DIR)/src/app/kelvora

test: build
	cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS)

# The core and command-line tests once more, built with AddressSanitizer and
# UndefinedBehaviorSanitizer.
sanitize-test: deps
	cmake -S . -B $(SANITIZE_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKELVORA_SANITIZE=address,undefined -DKELVORA_BUILD_GUI=OFF $(CMAKE_FLAGS)
	cmake --build $(SANITIZE_DIR) -j $(JOBS)
	cd $(SANITIZE_DIR) && ctest --output-on-failure -j $(JOBS)

# Every fuzz target for FUZZ_SECONDS, under both sanitizers (clang).
fuzz: deps
	CXX=clang++ cmake -S . -B $(FUZZ_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKELVORA_BUILD_FUZZ=ON -DKELVORA_SANITIZE=address,undefined -DKELVORA_BUILD_GUI=OFF -DKELVORA_BUILD_TESTS=OFF $(CMAKE_FLAGS)
	cmake --build $(FUZZ_DIR) -j $(JOBS)
	./scripts/run-fuzz.sh $(FUZZ_DIR) $(FUZZ_SECONDS)

bench: deps
	cmake -S . -B $(BENCH_DIR) -DCMAKE_BUILD_TYPE=Release -DKELVORA_BUILD_BENCH=ON -DKELVORA_BUILD_TESTS=OFF -DKELVORA_BUILD_GUI=OFF
	cmake --build $(BENCH_DIR) -j $(JOBS)
	cmake --build $(BENCH_DIR) --target run-bench

# A Debian package of both programs, copied here: apt install ./kelvora_*.deb
package: build
	rm -rf $(BUILD_DIR)/package
	cd $(BUILD_DIR) && cpack -G DEB -B package
	cp $(BUILD_DIR)/package/kelvora_*.deb .

# kelvora-cli linked statically, packed with the README: kelvora-cli-VERSION-linux-x86_64.tar.gz
portable: deps
	JOBS=$(JOBS) ./scripts/build-portable.sh $(PORTABLE_DIR) .

screenshot: build
	./scripts/screenshot.sh $(BUILD_DIR)/src/app/kelvora docs/kelvora.png en_US \
		/setEncrFiles DEMO /outputfile DEMO.vexo
	./scripts/screenshot.sh $(BUILD_DIR)/src/app/kelvora docs/kelvora-decrypt.png en_US \
		/setDecrFile DEMO.vexo
	QT_QPA_PLATFORM=offscreen $(BUILD_DIR)/screenshots/render-side-windows docs

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD_DIR) $(BENCH_DIR) $(PORTABLE_DIR) $(SANITIZE_DIR) $(FUZZ_DIR)
