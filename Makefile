# VKM Step: `make run` opens the editor, `make test` runs every test.
JOBS ?= $(shell nproc)
BUILD ?= build
ASAN_BUILD ?= build-asan
SAMPLE ?= data/samples/counter.gsp
SCREENSHOT ?= $(BUILD)/run-screenshot.png
# Extra CMake options for both builds (CI passes -DVKM_WERROR=ON).
CMAKE_EXTRA_ARGS ?=
export QT_QPA_PLATFORMTHEME :=

.PHONY: deps build build-asan run test test-normal test-asan bench clean

deps:
	@scripts/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_EXTRA_ARGS) >/dev/null
	cmake --build $(BUILD) -j$(JOBS)

build-asan: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DVKM_SANITIZE=ON $(CMAKE_EXTRA_ARGS) >/dev/null
	cmake --build $(ASAN_BUILD) -j$(JOBS)

run: build
	@if [ -n "$$DISPLAY" ] || [ -n "$$WAYLAND_DISPLAY" ]; then \
		$(BUILD)/bin/vkmstep $(SAMPLE); \
	else \
		echo "No display: running the editor under a virtual display"; \
		xvfb-run -a -s "-screen 0 1280x1024x24" $(BUILD)/bin/vkmstep --screenshot $(SCREENSHOT) $(SAMPLE) && \
		echo "Screenshot of the editor saved to $(SCREENSHOT)"; \
	fi

test-normal: build
	cd $(BUILD) && ctest --output-on-failure -j$(JOBS)

test-asan: build-asan
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1 \
		LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp:print_suppressions=0 \
		UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
		ctest --output-on-failure -j$(JOBS)

test: test-normal test-asan

bench: build
	@for b in $(BUILD)/bin/bench_*; do echo "== $$b"; $$b; done

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
