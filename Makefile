# The front door: make run | run-windows | test | install | uninstall | bench | fuzz | monkey | deb | dist | pictures
# One at a time: what each of them installs must not meet the other's, and a build uses all cores by itself.
.NOTPARALLEL:
.PHONY: run run-windows test install uninstall bench fuzz monkey deb dist pictures linux windows windows64 native native-asan linux-asan

# The command line reaches the program through the environment alone, so that no quote or dollar sign in it is lost.
export VELMARO_ARGS := $(value ARGS)
PREFIX ?= /usr/local

run: linux
	@tools/run.sh

# BITS=64 runs the 64-bit program.
run-windows: windows$(filter 64,$(BITS))
	@tools/run-windows.sh $(BITS)

test: native native-asan linux linux-asan windows windows64
	@tools/test.sh

install: linux
	@cmake --install build/linux --strip --prefix "$(PREFIX)"

bench: native linux windows
	@tools/bench.sh

# Each target for as many seconds: make fuzz SECONDS=600
fuzz:
	@tools/fuzz.sh $(SECONDS)

# Takes away what the last make install put there; with DESTDIR, below it.
uninstall:
	@sed "s|^|$(DESTDIR)|" build/linux/install_manifest.txt | tr '\n' '\0' | xargs -0r rm -f --

deb: linux
	@tools/deb.sh

dist: linux windows windows64
	@tools/dist.sh

pictures: linux windows windows64
	@tools/setup.sh pictures
	@tools/pictures.sh

# At random on the windows of both programs, repeated by its seed: make monkey SECONDS=600 SEED=7
monkey: linux-asan windows
	@tools/monkey.sh linux $(or $(SECONDS),300) $(or $(SEED),1)
	@tools/monkey.sh windows $(or $(SECONDS),300) $(or $(SEED),1)

linux windows windows64 native native-asan linux-asan:
	@tools/setup.sh $(@:-asan=)
	@mkdir -p build
	@cmake --preset $@ >build/$@.log || { cat build/$@.log; exit 1; }
	@cmake --build --preset $@
