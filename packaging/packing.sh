# What the packers share. Source it after setting `folder` (where the packages go) and `date`.
#
# The output is reproducible: the order, permissions and dates of the files are set here, and the user's
# settings are ignored.
umask 022
export LC_ALL=C TZ=UTC
unset CDPATH NSISDIR # either would change the paths used below, even if empty

# strip_program FROM TO: without debug information. Without --preserve-dates strip writes the current time into
# the program.
strip_program() { x86_64-w64-mingw32-strip --preserve-dates -o "$2" "$1"; }

# sign_programs FILE…: signs them if script/package --sign packs. Otherwise the programs have the same bytes on every
# machine.
sign_programs() { [ -z "${TORVAPDM_CERTIFICATE:-}" ] || packaging/sign "$@"; }

# copy_documents LIST PLACE: the pages that the file LIST names.
copy_documents() {
    local document
    while read -r document; do
        mkdir -p "$2/$(dirname "$document")"
        cp "$document" "$2/$document"
    done <"$1"
}

# copy_licences PLACE: the libraries linked into the programs require their licences to be included.
copy_licences() {
    local package
    mkdir "$1/licences"
    for package in libcli11-dev nlohmann-json3-dev mingw-w64-x86-64-dev; do
        cp "/usr/share/doc/$package/copyright" "$1/licences/$package.txt"
    done
    cp third_party/zlib/LICENSE "$1/licences/zlib.txt"
}

# set_dates PLACE…: and permissions.
set_dates() { find "$@" -type f -exec chmod 644 {} + -exec touch -d "$date" {} +; }

# zip_up NAME: zips the folder NAME as NAME.zip.
zip_up() { find "$1" -type f | sort | env -u ZIP -u ZIPOPT zip -9 -q -X -@ "$1.zip"; }
