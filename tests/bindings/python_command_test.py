"""What `python3 -m korvane_gen` answers, beside the requests of parity_scripts.py."""

import json
import os
import resource
import subprocess
import sys
import unittest

from python_support import PROJECT, ROOT, main


class CommandLine(unittest.TestCase):
    TOOL = ROOT / "linux" / "gen_query"
    PACKAGE = (sys.executable, "-m", "korvane_gen", "--executable", TOOL)

    def ask(self, command, request, text, **options):
        done = subprocess.run([*command, *request, "--json"], input=text, cwd=PROJECT, timeout=60,
                              capture_output=True, check=False, **options)
        return done.returncode, json.loads(done.stdout, object_hook=self.without_remarks)

    def without_remarks(self, record):
        return {key: value for key, value in record.items() if "error" not in key}

    def test_any_bytes_come_back_as_from_the_host_executable(self):
        no_utf8 = b"a\xff\xed\xa0\x80\xc3"
        private = "\ue000 \uef7f \uef80 \uefff".encode()
        for request, text in [
                (["find", no_utf8], b""),
                (["find", private], b""),
                (["text", "fold", no_utf8, private], b""),
                (["text", "number", b"12 " + no_utf8], b""),
                (["text", "sort"], no_utf8 + b"\na\r\nb\rc\x0bd\n" + private + b"\n"),
                (["text", "checksum"], no_utf8 + b"\r\n"),
                (["condition", "--stdin"], b"a\x1c = 1\nb = 2\r\n\xff = 3")]:
            for locale in ("C.UTF-8", "C"):
                with self.subTest(request=request, locale=locale):
                    environment = {**os.environ, "LC_ALL": locale}
                    self.assertEqual(
                        self.ask(self.PACKAGE, request, text, env=environment),
                        self.ask([self.TOOL], request, text, env=environment))

    def test_what_it_cannot_do_is_the_record_of_an_error(self):
        a_little = lambda: resource.setrlimit(resource.RLIMIT_AS, (100 << 20, 100 << 20))  # noqa: E731
        for request, text, status, fault in [
                (["text", "sort"], b"y\n" * (20 << 20), 2, "there is not enough memory"),
                (["text", "checksum", "-f", "/nope"], b"", 2, "No such file or directory"),
                (["text", "checksum", "-f", ""], b"", 2, "No such file or directory"),
                (["text", "checksum", "-f", "a", "b"], b"", 2, "'--file' and 'text' exclude each other"),
                (["condition"], b"", 2, "give a condition, or --stdin"),
                (["message", "%2"], b"", 2, "argument 2 is missing"),
                (["text", "fold", "-"], b"a\0b\n", 2, "contains a null character"),
                (["text", "wildcard", "a{", "-"], b"", 2, "makes no valid expression"),
                (["flags"], b"make x\n", 2, "line 1: not a step: make x")]:
            with self.subTest(request=request):
                done = subprocess.run([*self.PACKAGE, *request], input=text, cwd=PROJECT, timeout=60,
                                      capture_output=True, check=False, preexec_fn=a_little)
                self.assertEqual(done.returncode, status)
                (error,) = json.loads(done.stdout).values()
                self.assertIn(fault, error)
                self.assertEqual(done.stderr.decode(), f"korvane_gen: {error}\n")

    def test_a_wrong_command_line_is_the_record_of_an_error_too(self):
        for request, fault, place in [
                ([], "the following arguments are required: SUBCOMMAND", ""),
                (["nothing"], "invalid choice: 'nothing'", ""),
                (["find"], "find: the following arguments are required: name", " find"),
                (["text", "fold"], "text fold: the following arguments are required: text", " text fold"),
                (["find", "a", "--project-l", "lib"], "unrecognized arguments: --project-l", ""),
                (["time", "elapsed", "soon"], "time elapsed: argument seconds: invalid int value: 'soon'",
                 " time elapsed")]:
            with self.subTest(request=request):
                done = subprocess.run([*self.PACKAGE, "--json", *request], cwd=PROJECT, timeout=60,
                                      capture_output=True, check=False, text=True)
                self.assertEqual(done.returncode, 2)
                (error,) = json.loads(done.stdout).values()
                self.assertIn(fault, error)
                self.assertEqual(done.stderr, f"korvane_gen: {error}\nSee python3 -m korvane_gen{place} --help\n")

    def test_standard_error_that_takes_nothing_leaves_the_record(self):
        for place in "2>/dev/full", "2>&-":
            done = subprocess.run(["sh", "-c", f'"$@" {place}', "sh", *self.PACKAGE, "text", "number"],
                                  stdout=subprocess.PIPE, timeout=60, check=False)
            self.assertEqual(done.returncode, 2)
            self.assertEqual(json.loads(done.stdout),
                             {"error": "text number: the following arguments are required: text"})

    def test_libraries_may_be_given_one_by_one(self):
        request = ["find", "debounce.vhd", "--project-libs", "lib", "--project-libs", "../home/ada/lib",
                   "--user-libs", "inc", "--user-libs", "src", "--trace"]
        self.assertEqual(self.ask(self.PACKAGE, request, b""), self.ask([self.TOOL], request, b""))

    def test_names_are_answered_as_they_come(self):
        with subprocess.Popen([*self.PACKAGE, "find", "-"], cwd=PROJECT, text=True, stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE) as command:
            for name, path in ("mux.sv", f"{ROOT}/libraries/parablocks/gates/mux.sv"), ("nothing.v", None):
                print(name, file=command.stdin, flush=True)
                self.assertEqual(json.loads(command.stdout.readline())["path"], path)
            command.communicate()
        self.assertEqual(command.returncode, 1)

    def test_names_may_end_with_a_nul(self):
        answers = subprocess.run([*self.PACKAGE, "text", "fold", "-0", "X", "-"], input=b"A\nB\0\0" + 200000 * b"C",
                                 capture_output=True, timeout=60, check=True).stdout
        self.assertEqual([json.loads(line)["text"] for line in answers.splitlines()], ["x", "a\nb", "", 200000 * "c"])

    def test_a_name_that_is_none_spoils_no_other(self):
        done = subprocess.run([*self.PACKAGE, "text", "fold", "-", "X"], input=b"A\0\nB\n", capture_output=True,
                              timeout=60, check=False)
        self.assertEqual([json.loads(line) for line in done.stdout.splitlines()],
                         [{"error": "fold() argument 'text' contains a null character"}, {"given": "B", "text": "b"},
                          {"given": "X", "text": "x"}])
        self.assertEqual((done.returncode, done.stderr.decode()),
                         (2, "korvane_gen: fold() argument 'text' contains a null character\n"))

    def test_standard_input_that_is_closed_is_an_error(self):
        for request in (["text", "sort"], ["find", "-"]):
            done = subprocess.run(["sh", "-c", 'exec "$@" <&-', "sh", *self.PACKAGE, *request], cwd=PROJECT,
                                  capture_output=True, check=False, timeout=60)
            self.assertEqual((done.returncode, json.loads(done.stdout)), (2, {"error": "[Errno 9] Bad file descriptor"}))

    def test_an_answer_that_cannot_be_written_is_no_success(self):
        for count in (1, 10000): # with less and more than a file's buffer
            with open("/dev/full", "wb") as full:
                done = subprocess.run([*self.PACKAGE, "text", "sort"], input=b"line\n" * count, stdout=full,
                                      stderr=subprocess.PIPE, timeout=60, check=False)
            self.assertEqual((done.returncode, done.stderr.decode()),
                             (2, "korvane_gen: cannot write to standard output: No space left on device\n"))


if __name__ == "__main__":
    main()
