// A Companion in one file. docs/your-own-companion.md has the order of its steps, and the rules that it keeps.
package main

import (
	"fmt"
	"io"
	"net"
	"os"
	"path/filepath"
	"regexp"
	"strings"
	"syscall"
	"time"
	"unicode/utf16"
	"unsafe"
)

var (
	kernel32, user32 = syscall.NewLazyDLL("kernel32.dll").NewProc, syscall.NewLazyDLL("user32.dll").NewProc
	title            = unsafe.Pointer(syscall.StringToUTF16Ptr("TORVA ZEM example"))
	property         = unsafe.Pointer(syscall.StringToUTF16Ptr("https://torva.example/namespace/torvapdm/instance"))
	program, _       = os.Executable()
	fileName         = regexp.MustCompile(`^([A-Za-z]:\\|\\\\)?[^\x00-\x1f]+$`) // a full path has the group
	notices          = map[*regexp.Regexp]string{                               // each notice, and its line in the log
		regexp.MustCompile(`^ZEMID=(\d{1,10})\|([^\x00-\x1f"]+)\n$`):              `commit-notice id=$1 file="$2"`,
		regexp.MustCompile(`^MCAMXMLIMPORTDATAID=(\d{1,10});([^\x00-\x1f"]+)\n$`): `setup-sheet id=$1 file="$2"`,
		regexp.MustCompile(`^IMPORTNCQUEUE\|([^\x00-\x1f"]+)\n$`):                 `nc-queue file="$1"`,
		regexp.MustCompile(`^TOOL-(\d{1,10})\n$`):                                 `tool-data id=$1`,
	}
)

// main leaves its command line in a file for the running Companion, and becomes the Companion if none is running.
func main() {
	os.Chdir(filepath.Dir(program)) // the installation folder
	for _, name := range []string{"cfg", "commit", "library", "sys", "temp", "tmp"} {
		os.Mkdir(name, 0o777)
	}
	save(fmt.Sprintf(`temp\command-%d-%d.txt`, time.Now().UnixNano(), os.Getpid()), strings.Join(os.Args[1:], "\n"))
	semaphore := unsafe.Pointer(syscall.StringToUTF16Ptr(`Local\https://torva.example/namespace/torvapdm/singleton-token`))
	if _, _, err := kernel32("CreateSemaphoreW").Call(0, 1, 1, uintptr(semaphore)); err == syscall.ERROR_ALREADY_EXISTS {
		return
	}
	report(fmt.Sprintf(`started folder="%s" pid=%d`, filepath.Dir(program), os.Getpid()))
	if listener, err := net.Listen("tcp4", ":4559"); err == nil { // without notices commits are still polled for
		go listen(listener)
	}
	go user32("MessageBoxW").Call(0, uintptr(title), uintptr(title), 0) // the main window
	for seen, window := false, uintptr(0); !seen || window != 0; seen = seen || window != 0 {
		time.Sleep(250 * time.Millisecond)
		window, _, _ = user32("FindWindowW").Call(32770 /* the class of a message box */, uintptr(title))
		user32("SetPropW").Call(window, uintptr(property), 1)
		poll(window != 0 || !seen)
	}
}

// poll looks for what hosts and other starts have left. Commands are dropped after five seconds, but not a commit.
func poll(open bool) {
	files, _ := filepath.Glob(`temp\torvapdm-*.[cd]*`) // .closed and .dat
	for _, path := range files {
		take(strings.Split(path, ".")[0], open && path == fmt.Sprintf(`temp\torvapdm-%d.dat`, os.Getpid()))
	}
	commands, _ := filepath.Glob(`temp\command-*.txt`)
	for _, path := range commands {
		old := path < fmt.Sprintf(`temp\command-%d.txt`, time.Now().Add(-5*time.Second).UnixNano())
		command, err := os.ReadFile(path)
		if err == nil && (old && !strings.HasPrefix(string(command), "--commit") || execute(string(command))) {
			os.Remove(path)
		}
	}
}

// execute carries out a command line. It returns false if that has to be tried again.
func execute(command string) bool {
	switch words := append(strings.Split(command, "\n"), "", "", "", ""); words[0] {
	case "--commit":
		commit(words[1], words[3], true)
	case "--open":
		return send(words[3], "\xEF\xBB\xBF"+words[2]+" "+words[1]+"\n", words[2], words[4])
	case "--new-file":
		return send(words[1], "\xEF\xBB\xBF0 \n", "", "")
	case "--check-in":
		return send(words[1], "CHECKIN", "", "")
	default: // such as --checkout and --about, which are for people
		report(fmt.Sprintf(`command line="%s"`, strings.ReplaceAll(command, "\n", " ")))
	}
	return true
}

// send writes a request into the command file of a host, if that file exists and is empty.
func send(host, request, id, machine string) bool {
	file, size := open(`temp\mastercam-`+host+".dat", syscall.GENERIC_READ|syscall.GENERIC_WRITE, 7)
	defer file.Close()
	if file == nil || size > 0 {
		return false
	}
	if machine != "" {
		save(`temp\mcsettings-`+id+".txt", id+"|1|0|"+machine+"\r\n")
	}
	_, err := file.WriteString(request)
	return err == nil
}

// take stores the commits after the bookmark. It deletes the file when no host can find it or has it open any more.
func take(base string, live bool) {
	path, sharing, taken, free := base+".dat", uint32(7), int64(0), uintptr(1)
	if !live {
		path, sharing = base+".closed", 0
		syscall.MoveFile(syscall.StringToUTF16Ptr(base+".dat"), syscall.StringToUTF16Ptr(path))
	}
	bookmark, missing := os.ReadFile(base + ".taken")
	fmt.Sscanf(string(bookmark), "taken %d", &taken)
	file, size := open(path, syscall.GENERIC_READ, sharing)
	if size > taken { // Wine takes a lock of no bytes at the start for one of the whole file
		free, _, _ = kernel32("LockFile").Call(file.Fd(), uintptr(taken), 0, uintptr(size-taken), 0)
	}
	data, err := io.ReadAll(io.NewSectionReader(file, taken, size-taken))
	file.Close()
	if file == nil || free == 0 || err != nil || size < taken || missing != nil && !os.IsNotExist(missing) {
		return // a host is writing, or the bookmark cannot be read
	}
	for end, id, name := next(data); end > 0; end, id, name = next(data) {
		data, taken = data[end:], taken+int64(end)
		commit(name, fmt.Sprint(id), len(data) == 0)
		save(base+".taken", fmt.Sprintf("taken %d\n", taken))
	}
	if !live {
		os.Remove(base + ".taken") // first, because it must not apply to another file of this name
		os.Remove(path)
	}
}

// next finds the first record and its end. Bytes inside which a record with a full path begins are not a record.
func next(data []byte) (end int, id uint32, file string) {
	for i := 0; i+8 <= len(data) && (end == 0 || i < end); i++ {
		header := (*[2]uint32)(unsafe.Pointer(&data[i])) // the id, the length of the name
		if units := int(header[1]); units > 0 && units <= 32767 && i+8+2*units <= len(data) {
			name := string(utf16.Decode(unsafe.Slice((*uint16)(unsafe.Pointer(&data[i+8])), units)))
			if match := fileName.FindStringSubmatch(name); match != nil && (i == 0 || match[1] != "") {
				end, id, file = i+8+2*units, header[0], name
			}
		}
	}
	return
}

// commit stores a file as a new version. The picture belongs to the last commit.
func commit(file, id string, last bool) {
	fields := strings.TrimSuffix(fmt.Sprintf(`file="%s" id=%s`, file, id), " id=")
	report("commit " + fields)
	content, err := os.ReadFile(file)
	if err != nil {
		report(fmt.Sprintf(`commit-failed %s reason="%s"`, fields, err))
		return
	}
	version := `library\` + filepath.Base(file) + time.Now().Format(`\2006-01-02 15-04-05.000000`) + filepath.Ext(file)
	os.Mkdir(filepath.Dir(version), 0o777)
	if last {
		os.Rename(`commit\screendump.bmp`, version+".bmp")
	}
	save(version, string(content))
}

// save writes a file completely or not at all. If it cannot, it waits, so that no commit is taken and not stored.
func save(path, content string) {
	for os.WriteFile(path+".new", []byte(content), 0o666) != nil || os.Rename(path+".new", path) != nil {
		time.Sleep(time.Second)
	}
}

// open opens a file that exists. If it cannot, the size is 0, and reading and writing fail.
func open(path string, access, sharing uint32) (*os.File, int64) {
	handle, _ := syscall.CreateFile(syscall.StringToUTF16Ptr(path), access, sharing, nil, syscall.OPEN_EXISTING, 0, 0)
	file := os.NewFile(uintptr(handle), path)
	size, _ := file.Seek(0, io.SeekEnd)
	return file, size
}

// listen reads one notice from each connection, for at most ten seconds.
func listen(listener net.Listener) {
	connection, err := listener.Accept()
	go listen(listener) // so that this connection delays no other
	if err == nil {
		defer connection.Close()
		connection.SetDeadline(time.Now().Add(10 * time.Second))
		notice, _ := io.ReadAll(io.LimitReader(connection, 1024))
		for form, event := range notices {
			if len(notice) < 1024 && form.Match(notice) {
				report(form.ReplaceAllString(string(notice), event))
			}
		}
	}
}

// report appends a line to the log with one write.
func report(event string) {
	file, _ := os.OpenFile(`sys\companion.log`, os.O_CREATE|os.O_APPEND|os.O_WRONLY, 0o666)
	file.WriteString(time.Now().Format("2006-01-02 15:04:05.000 ") + strings.ToValidUTF8(event, "?") + "\n")
	file.Close()
}
