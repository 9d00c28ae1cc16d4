# The front door: make run | test | windows | bench | dist
.PHONY: run test dist windows native native-asan bench setup

# The command line reaches velmaro.exe through the environment alone, so that no quote or dollar sign in it is lost.
export VELMARO_ARGS := $(value ARGS)

run: windows
	@tools/run.sh

test: native native-asan windows
	@tools/test.sh

bench: native windows
	@tools/bench.sh

dist: windows
	@tools/dist.sh

windows native native-asan: setup
	@cmake --preset $@ >build/$@.log || { cat build/$@.log; exit 1; }
	@cmake --build --preset $@

setup:
	@tools/setup.sh
	@mkdir -p build
