"""What korvane_gen does for Python: natural types, named mistakes, nothing lost and nothing leaked.

    python_test.py GEN_QUERY SUITE [unittest options]      with the package in PYTHONPATH
"""

import os
import pathlib
import resource
import subprocess
import sys
import tempfile
import threading
import unittest

sys.path.append(str(pathlib.Path(__file__).parent.parent))
import staging  # noqa: E402

import korvane_gen as gen  # noqa: E402
from korvane_gen import _gen  # noqa: E402

GEN_QUERY, SUITE = (pathlib.Path(argument) for argument in sys.argv[1:3])
SCRATCH = tempfile.TemporaryDirectory()
ROOT = pathlib.Path(os.path.realpath(SCRATCH.name)) / "korvane"
PROJECT = ROOT / "project"


def in_child(body, **options):
    """Runs a script in a process of its own; its standard output."""
    done = subprocess.run([sys.executable, "-c", f"import korvane_gen as gen\n{body}"], text=True,
                          stdout=subprocess.PIPE, timeout=60, check=True, **options)
    return done.stdout


class Start(unittest.TestCase):
    def test_what_needs_the_installation_says_so_before_the_start(self):
        shown = in_child("try: gen.find('a')\nexcept gen.NotStartedError as error: print(error)")
        self.assertEqual(shown, "find() needs korvane_gen.start()\n")

    def test_root_comes_from_the_environment(self):
        environment = {**os.environ, "KORVANE_ROOTDIR": str(ROOT)}
        self.assertEqual(in_child("print(gen.start().root)", env=environment), f"{ROOT}\n")

    def test_an_executable_will_do(self):
        tool = ROOT / "linux" / "gen_query"
        shown = in_child(f"with gen.start(executable={str(tool)!r}) as i: print(i.executable, i.root)")
        self.assertEqual(shown, f"{tool} {ROOT}\n")

    def test_a_missing_root_is_a_missing_file(self):
        shown = in_child("try: gen.start('/no/such')\nexcept FileNotFoundError as e: print(e.filename)")
        self.assertEqual(shown, "/no/such\n")

    def test_the_end_of_a_start_leaves_the_answers_to_others(self):
        shown = in_child(f"with gen.start({str(ROOT)!r}) as installation:\n"
                         f"    with gen.start({str(ROOT)!r}): pass\n"
                         "    print(installation.root)\n"
                         "print(gen.find('counter.v'))\n", cwd=PROJECT)
        self.assertEqual(shown, f"{ROOT}\n{PROJECT}/counter.v\n")

    def test_another_root_is_refused(self):
        with self.assertRaisesRegex(ValueError, "root is another one"):
            gen.start("/")

    def test_installation(self):
        installation = gen.start(ROOT)
        self.assertEqual(installation.common_data, ROOT / "common")
        self.assertEqual(installation.device_files, ["allycore.ddb", "prismo2.ddb"])
        self.assertEqual(installation.library(2), ROOT / "libraries/vhdl")
        self.assertEqual(len(installation.libraries), 29)
        self.assertTrue(installation.libraries[20].eda_only)

    def test_internal_errors_have_their_condition_source_and_line(self):
        with self.assertRaises(gen.InternalError) as caught:
            gen.start(ROOT).library(29)
        (report,) = caught.exception.reports
        self.assertEqual((report.condition, report.source), ("type < GEN_LIB_SIZE", "gen_path"))
        self.assertGreater(report.line, 0)


class Lookup(unittest.TestCase):
    def setUp(self):
        os.chdir(PROJECT)
        gen.project.clear()
        gen.cache.clear()
        gen.project.directory = PROJECT
        gen.project.database = "db"
        gen.project.libraries = ["lib"]
        gen.project.user_libraries = "../home/ada/lib; /nowhere"

    def test_files_are_paths_and_none_is_none(self):
        self.assertEqual(gen.find("adder.v"), PROJECT / "adder.v")
        self.assertEqual(gen.find(pathlib.PurePath("inc/display.vh")), PROJECT / "inc/display.vh")
        self.assertIsNone(gen.find("nothing.v"))
        self.assertEqual(gen.find_eda("cells.v"), ROOT / "eda/mentor/cells.v")

    def test_project(self):
        self.assertEqual(gen.project.directory, PROJECT)
        self.assertEqual(gen.project.database, pathlib.Path("db"))
        self.assertEqual(gen.project.libraries, [pathlib.Path("lib")])
        self.assertEqual(len(gen.project.user_libraries), 2)
        self.assertEqual(gen.project.relative(PROJECT / "adder.v"), pathlib.Path("adder.v"))
        self.assertIsNone(gen.project.relative("/etc/passwd"))

    def test_a_property_that_is_not_there_cannot_be_set(self):
        for settable, name in [(gen.project, "user_libs"), (gen.cache, "size"), (gen.start(ROOT), "path")]:
            with self.subTest(name=name):
                with self.assertRaisesRegex(AttributeError, f"no attribute '{name}'"):
                    setattr(settable, name, ["lib"])

    def test_a_directory_with_a_semicolon_is_one_directory(self):
        gen.project.libraries = ["a;b", "lib"]
        self.assertEqual(gen.project.libraries, [pathlib.Path("a;b"), pathlib.Path("lib")])

    def test_candidates_tell_what_is_shadowed(self):
        found = gen.candidates("adder.v")
        self.assertEqual([asked.standing for asked in found], ["wins"] + 5 * ["shadowed"])
        self.assertEqual(found[-1].group, "shipped libraries")
        self.assertEqual(gen.find("adder.v"), found[0].path)

    def test_trace_tells_every_check(self):
        asked = gen.trace("mux.sv")
        self.assertTrue(asked[-1].there)
        self.assertFalse(any(one.there for one in asked[:-1]))
        self.assertEqual(asked[0].path, PROJECT / "mux.sv")

    def test_include_and_sources(self):
        found = gen.include("segments.vh", from_file="inc/display.vh", alias="/copy/display.vh")
        self.assertEqual(found, (pathlib.Path("inc/segments.vh"), pathlib.Path("/copy/segments.vh")))
        self.assertIsNone(gen.include("segments.vh"))
        self.assertEqual([source.type for source in gen.sources("counter")],
                         ["kbd", "vhd", "v", "edf", "sv"])
        self.assertEqual(gen.sources("nothing"), [])

    def test_cache_keeps_what_was_not_there(self):
        late = PROJECT / "late.v"
        self.assertIsNone(gen.find_cached("late.v"))
        late.touch()
        try:
            self.assertIsNone(gen.find_cached("late.v"))
            self.assertEqual(len(gen.cache), 1)
            gen.cache.clear()
            self.assertEqual(gen.find_cached("late.v"), late)
        finally:
            late.unlink()

    def test_names_of_any_bytes_come_back(self):
        name = b"caf\xe9.v"
        (PROJECT / os.fsdecode(name)).touch()
        found = gen.find(name)
        self.assertEqual(os.fsencode(found), os.fsencode(PROJECT) + b"/" + name)
        self.assertEqual(gen.find(found), found)
        self.assertEqual(gen.find_cached(os.fsdecode(name)), found)
        found.unlink()

    def test_a_removed_directory_is_nothing_worse_than_empty(self):
        gone = PROJECT / "gone"
        gone.mkdir()
        os.chdir(gone)
        gone.rmdir()
        gen.project.clear()
        self.assertIsNone(gen.find("no_such_file.v"))
        self.assertIsNotNone(gen.find("mux.sv"))

    def test_a_hundred_thousand_lookups_need_no_more_memory(self):
        def ask(count):
            for _ in range(count):
                gen.find_cached("adder.v")
                gen.natural_compare("data[10]", "data[9]")
                _gen.trace_find("adder.v")
            return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
        before = ask(2000)
        self.assertLess(ask(100000) - before, 1024)

    def test_threads_take_turns(self):
        found = []
        threads = [threading.Thread(target=lambda: found.extend(gen.find("adder.v") for _ in range(500)))
                   for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(set(found), {PROJECT / "adder.v"})
        self.assertEqual(len(found), 2000)


class Names(unittest.TestCase):
    def test_files(self):
        os.chdir(PROJECT)
        gen.project.database = "/p/db/"
        self.assertEqual(gen.database_file("chip"), pathlib.Path("/p/db/chip.pdb"))
        self.assertEqual(len(gen.tool_files()), 30)
        made = gen.temporary_file(".", prefix="report", number=42)
        self.assertEqual(made.name, "rep0000002a.tmp")
        made.unlink()
        with self.assertRaisesRegex(OSError, "no file can be created in /nowhere"):
            gen.temporary_file("/nowhere")

    def test_paths_for_64bit_are_put_back(self):
        shown = in_child(
            f"import os\nos.environ['KORVANE_PLATFORM'] = 'linux'\ngen.start({str(ROOT)!r})\n"
            "os.environ.pop('LD_LIBRARY_PATH', None)\nbefore = dict(os.environ)\n"
            "with gen.paths_for_64bit('fitter') as changed:\n"
            "    print(changed, os.environ['PATH'].split(':')[0])\n"
            "print(dict(os.environ) == before)\n"
            "with gen.paths_for_64bit('no_such_tool') as changed: print(changed)\n")
        self.assertEqual(shown, f"True {ROOT}//linux64/\nTrue\nFalse\n")


class Text(unittest.TestCase):
    def test_conditions(self):
        self.assertEqual(gen.condition("(|top|a = 1) && (time > 10ns)"),
                         "LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))")
        with self.assertRaises(gen.ConditionError) as caught:
            gen.condition("a == 1")
        self.assertEqual(caught.exception.diagnostics, ["Missing left hand side of equation"])
        self.assertEqual(caught.exception.prefix, "EQUAL_TO(HPATH(a),)")
        self.assertEqual([token.name for token in gen.condition_tokens("a = time")],
                         ["path", "=", "time"])
        self.assertEqual(gen.condition_tree("a = 1"),
                         [(0, "EQUAL_TO"), (1, "HPATH a"), (1, "BUS 1")])

    def test_natural_order(self):
        names = ["data[10]", "data[9]", "DATA[1]", "a01", "a1"]
        self.assertEqual(sorted(names, key=gen.natural_key),
                         ["DATA[1]", "a1", "a01", "data[9]", "data[10]"])
        self.assertEqual(sorted(["B2", "b10", "b1"], key=lambda n: gen.natural_key(n, ignore_case=True)),
                         ["b1", "B2", "b10"])
        self.assertGreater(gen.natural_compare("file10", "file9"), 0)
        self.assertEqual(gen.natural_compare("A", "a", ignore_case=True), 0)
        self.assertLess(gen.byte_compare("file10", "file9"), 0)
        self.assertNotEqual(gen.natural_key("a"), "a")

    def test_the_rest(self):
        self.assertEqual(gen.fold("größe A\udce9"), "größe a\udce9")
        self.assertEqual(gen.fold("größe", upper=True), "GRößE")
        self.assertEqual(gen.trim(" a\t"), "a\t")
        self.assertEqual(gen.trim(" a\t", white_space=True), "a")
        self.assertEqual(gen.read_integer("-255 ns"), (-255, 4))
        self.assertIsNone(gen.read_integer("ns"))
        self.assertEqual(gen.read_real("1.5x"), (1.5, 3))
        self.assertEqual(gen.write_integer(-255, 16), "ffffff01")
        self.assertEqual(gen.wildcard("a*.v"), "^[aA].*\\.[vV]$")
        self.assertTrue(gen.wildcard_matches("a*.v", "ADD.V"))
        self.assertFalse(gen.wildcard_matches("a*.v", "top.v"))
        self.assertTrue(gen.wildcard_matches("dd", "add", part=True))
        self.assertEqual(gen.sanitise("a b.v  "), "a_bLv")
        self.assertEqual(gen.checksum_sanitised("a b.v  "), gen.checksum("a_bLv"))
        self.assertEqual(gen.checksum(""), 0)
        self.assertEqual(gen.hash_size(14), 31)
        self.assertEqual(gen.message("%2!d! errors in %1, %3!.1f!%%", "top.v", 3, 97.25),
                         "3 errors in top.v, 97.2%")
        self.assertEqual(gen.message_inserts("%1!d!"), [(1, "%d")])


class Others(unittest.TestCase):
    def test_time(self):
        self.assertEqual([unit.short_name for unit in gen.time_units()], ["s", "ms", "us", "ns", "ps"])
        self.assertEqual(gen.frequency_units()[3].magnitude, 9)
        self.assertEqual(gen.date(1794746854), "Sun Nov 15 12:47:34 2026")
        self.assertEqual(gen.elapsed(90061), "1:01:01:01")
        self.assertEqual(gen.format_now("100%%"), "100%")
        self.assertIsNone(gen.format_now(""))
        self.assertGreater(gen.now().seconds, 0)
        with gen.Stopwatch() as watch:
            sum(range(100000))
        self.assertEqual(watch.seconds, watch.seconds)
        watch.reset()
        self.assertEqual(str(watch), "0.000000 seconds")

    def test_machine_and_notices(self):
        machine = gen.machine("127.0.0.1")
        self.assertEqual((machine.os_name, machine.ip_address), ("Linux", "127.0.0.1"))
        self.assertEqual(gen.usage_report(), [])
        self.assertEqual(len(gen.usage_report(modules=True, memory=True)), 2)
        self.assertIn("Copyright", gen.notice_lines(gen.Notice.BANNER, "-- ")[0])
        self.assertTrue(gen.notice(gen.Notice.WARNING))
        self.assertEqual(len(gen.do_not_edit("# ")), 3)

    def test_undo_file(self):
        os.chdir(PROJECT)
        with gen.UndoFile("db") as file:
            with file.section("Move node", description="one node") as section:
                section.undo("undo_move a", comment="restores a")
                section.redo("redo_move a")
        written = PROJECT / "db" / "undo_redo.txt"
        self.assertIn("Move node\none node\n", written.read_text())
        written.unlink()
        with self.assertRaisesRegex(ValueError, "a section needs a title and a command"):
            with file.section("Nothing in it"):
                pass
        with self.assertRaisesRegex(OSError, "/nowhere/undo_redo.txt"):
            gen.UndoFile("/nowhere").commit()
        with self.assertRaises(KeyError):
            with gen.UndoFile("."):
                raise KeyError
        self.assertFalse((PROJECT / "undo_redo.txt").exists())

    def test_a_command_outside_its_section(self):
        file = gen.UndoFile(PROJECT)
        with self.assertRaises(KeyError):
            with file.section("Fails") as fails:
                fails.undo("kept")
                raise KeyError
        with file.section("Works") as works:
            works.undo("kept")
        for over in fails, works:
            with self.assertRaisesRegex(ValueError, "section has not begun or is over"):
                over.redo("lost")
        self.assertEqual(file.commit().read_text().split("\n")[0], "Works")
        (PROJECT / "undo_redo.txt").unlink()

    def test_flags(self):
        flags = gen.Flags()
        self.assertEqual([flags.add("alpha"), flags.add("beta")], [1, 2])
        self.assertEqual(flags.describe(3), "(0x3) alpha | beta")
        self.assertEqual(flags.find("beta"), 2)
        with self.assertRaisesRegex(gen.InternalError, "couldn't find flag 'gamma'"):
            flags.find("gamma")
        flags.remove(1)
        self.assertEqual(flags.slots[0].state, "dirty")
        self.assertEqual(flags.slots[1].name, "beta")
        self.assertEqual(flags.statistics, (1, 0, 31))
        self.assertEqual(flags.swept(), [])

    def test_histogram(self):
        histogram = gen.Histogram(0, 10, bins=5)
        histogram.extend([0, 1.999, 2, 10, -1, 13, float("nan")])
        self.assertEqual(len(histogram), 4)
        self.assertEqual([bin.items for bin in histogram.bins], [2, 1, 0, 0, 1])
        self.assertEqual(histogram.outside, (1, 1, 1))
        self.assertEqual((histogram.bin(10), histogram.bin(11)), (4, None))
        with self.assertRaisesRegex(ValueError, "low is not below high"):
            gen.Histogram(1, 1)


class WrongArguments(unittest.TestCase):
    # One good argument for each parameter of a function, by what its name stands for.
    GOOD = {"number": 1, "radix": 10, "library": 1, "group": 1, "seconds": 1, "ignore_case": 0, "upper": 0,
            "white_space": 0, "part": 0, "shipped_only": 0, "eda": 0, "all": 0, "modules": 0, "details": 0,
            "memory": 0, "notice": 0, "redo": 0, "mask": 1, "low": 0.0, "high": 1.0, "bins": 1, "item": 0.5,
            "watch": _gen.stopwatch_create(), "undo": _gen.undo_create("."), "flags": _gen.flags_create(),
            "histogram": _gen.histogram_create(0, 1, 1)}
    FUNCTIONS = {
        "start": "root executable", "library": "library", "set_project": "directory",
        "set_database": "directory", "set_output": "directory", "set_project_libraries": "directories",
        "set_user_libraries": "directories", "directories": "group", "relative_to_project": "path",
        "find": "name", "find_eda": "name", "find_cached": "name", "include": "name from_file alias",
        "sources": "unit shipped_only", "trace_find": "name eda all",
        "trace_include": "name from_file alias all", "trace_sources": "unit shipped_only all",
        "database_file": "name extension", "temporary_file": "directory prefix number",
        "enter_64bit": "tool", "leave_64bit": "path library_path", "environment": "name",
        "condition": "text", "condition_tokens": "text", "condition_tree": "text",
        "natural_compare": "first second ignore_case", "byte_compare": "first second ignore_case",
        "fold": "text upper", "trim": "text white_space", "read_integer": "text",
        "write_integer": "number radix", "read_real": "text", "wildcard": "pattern part",
        "wildcard_matches": "pattern part name", "checksum": "text", "checksum_sanitised": "text",
        "sanitise": "name", "hash_size": "number", "message_inserts": "format", "date": "seconds",
        "format_now": "format", "elapsed": "seconds", "stopwatch_start": "watch",
        "stopwatch_stop": "watch", "stopwatch_reset": "watch", "stopwatch_seconds": "watch",
        "stopwatch_lap": "watch", "machine": "host", "usage_report": "tag phase modules details memory",
        "notice": "notice", "notice_lines": "notice prefix", "do_not_edit": "prefix",
        "undo_create": "directory", "undo_begin": "undo title", "undo_describe": "undo description",
        "undo_add": "undo redo command comment", "undo_end": "undo", "undo_commit": "undo",
        "flags_add": "flags name", "flags_find": "flags name", "flags_remove": "flags mask",
        "flags_describe": "flags mask", "flags_statistics": "flags", "flags_slots": "flags",
        "flags_swept": "flags", "histogram_create": "low high bins", "histogram_add": "histogram item",
        "histogram_size": "histogram", "histogram_bin": "histogram item", "histogram_bins": "histogram",
        "histogram_outside": "histogram"}
    WITHOUT = {"finish", "where", "installation", "libraries", "device_files", "project", "file_types",
               "clear_paths", "clear_cache", "cache_size", "tool_files", "profile_directory",
               "is_64bit_wanted", "time_units", "frequency_units", "now", "stopwatch_create",
               "flags_create"}

    def test_every_function_is_in_the_table(self):
        functions = {name for name in dir(_gen) if callable(getattr(_gen, name)) and name[0] != "_"}
        self.assertEqual(functions, set(self.FUNCTIONS) | self.WITHOUT | {"message", "natural_key"})

    def test_every_wrong_argument_is_named(self):
        for function, parameters in self.FUNCTIONS.items():
            names = parameters.split()
            good = {name: self.GOOD.get(name, "text") for name in names}
            shown = function + r"\(\)" if function in dir(gen) else r"[\w.]+(\(\))?"
            for name in names:
                with self.subTest(function=function, argument=name):
                    with self.assertRaisesRegex(TypeError, rf"^{shown} argument '{name}' "):
                        getattr(_gen, function)(**{**good, name: object()})
                    if good[name] == "text":
                        with self.assertRaisesRegex(ValueError, rf"argument '{name}' holds a null"):
                            getattr(_gen, function)(**{**good, name: "a\0b"})
                        with self.assertRaisesRegex(ValueError, rf"argument '{name}' holds a character that no"):
                            getattr(_gen, function)(**{**good, name: "a\ud800b"})
                    elif isinstance(good[name], int):
                        with self.assertRaisesRegex(OverflowError, rf"argument '{name}' does not fit"):
                            getattr(_gen, function)(**{**good, name: 2**70})
                    elif isinstance(good[name], float):
                        with self.assertRaisesRegex(OverflowError, rf"argument '{name}' does not fit"):
                            getattr(_gen, function)(**{**good, name: 2**2000})

    def test_messages_have_the_names_that_users_know(self):
        with gen.UndoFile(SCRATCH.name).section("s") as section:
            section.undo("u")
        for call, complaint in [
                (lambda: gen.candidates(5), "trace() argument 'name' must be str, bytes or a path"),
                (lambda: setattr(gen.project, "directory", 5), "project.directory argument 'directory' must be"),
                (lambda: gen.project.relative(5), "project.relative() argument 'path' must be"),
                (lambda: gen.UndoFile(5), "UndoFile() argument 'directory' must be"),
                (lambda: section.redo("r"), "UndoSection: section has not begun or is over"),
                (lambda: gen.Flags().add(5), "Flags.add() argument 'name' must be"),
                (lambda: gen.Histogram(1, 0), "Histogram(): low is not below high"),
                (lambda: gen.paths_for_64bit(5).__enter__(), "paths_for_64bit() argument 'tool' must be")]:
            with self.assertRaises((TypeError, ValueError)) as caught:
                call()
            self.assertIn(complaint, str(caught.exception))
        internal = set(self.FUNCTIONS) - set(dir(gen))
        self.assertEqual({name for name in internal if self.complaint_of(name).startswith(name)},
                         {"environment", "leave_64bit"}) # nobody passes anything else there

    def complaint_of(self, function):
        with self.assertRaises(TypeError) as caught:
            getattr(_gen, function)(*6 * [object()])
        return str(caught.exception)

    def test_missing_unknown_and_too_many(self):
        for call, complaint in [
                (lambda: gen.natural_compare("a"), "argument 'second' is missing"),
                (lambda: gen.fold("a", lower=True), "argument 'lower' is not known"),
                (lambda: gen.fold("a", text="b"), "argument 'text' is given twice"),
                (lambda: gen.checksum("a", "b"), "takes 1 arguments, not 2"),
                (lambda: gen.find(None), "argument 'name' must be str, bytes or a path"),
                (lambda: _gen.message(), "argument 'format' is missing"),
                (lambda: gen.natural_key(3), "argument 'text' must be")]:
            with self.assertRaisesRegex(TypeError, complaint):
                call()

    def test_library_directories_are_paths(self):
        for directories in (5, None, [1], ["lib", None]):
            with self.assertRaisesRegex(TypeError, "library directories must be paths"):
                gen.project.libraries = directories
            with self.assertRaisesRegex(TypeError, "library directories must be paths"):
                gen.project.user_libraries = directories

    def test_what_does_not_fit_is_named(self):
        for call, complaint in [
                (lambda: gen.write_integer(1, 37), "radix is not from 2 to 36"),
                (lambda: gen.message("%2", "a"), "argument 2 is missing"),
                (lambda: gen.message("%1!d!", "x"), "argument 1 is nothing that %d can print"),
                (lambda: gen.wildcard_matches("a{", "a"), "makes no valid expression"),
                (lambda: gen.notice_lines(gen.Notice.BANNER, "\0"), "holds a null character"),
                (lambda: _gen.notice(4), "notice is none of the four")]:
            with self.assertRaisesRegex(ValueError, complaint):
                call()


if __name__ == "__main__":
    os.environ.update(TZ="UTC")
    staging.stage(ROOT, GEN_QUERY, SUITE)
    gen.start(ROOT)
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
