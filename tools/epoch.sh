# Sourced by what writes a release: the one time that all files in it bear, that of the newest entry of the package's
# changelog, so that two builds at two times give the same bytes.
SOURCE_DATE_EPOCH=$(date -u -d "$(sed -n 's/^ -- .*>  //p' packaging/debian/changelog | head -n 1)" +%s)
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C
