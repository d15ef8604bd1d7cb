"""Installation, project, lookup and names of files from Python: natural types, nothing lost and nothing leaked."""

import os
import pathlib
import resource
import tempfile
import threading
import unittest

import korvane_gen as gen
from korvane_gen import _gen
from python_support import PROJECT, ROOT, in_child, main


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

    def test_the_same_executable_may_be_named_in_other_ways(self):
        tool = ROOT / "linux" / "gen_query"
        with tempfile.TemporaryDirectory() as scratch:
            link = pathlib.Path(scratch) / "link"
            link.symlink_to(ROOT / "libraries")
            other = pathlib.Path(scratch) / "gen_query"
            other.touch()
            for name in (f"{link}/../linux/gen_query", f"/{tool}"):
                shown = in_child(f"for name in {name!r}, {name!r}, {str(tool)!r}:\n"
                                 "    print(gen.start(executable=name).executable)\n"
                                 f"try: gen.start(executable={str(other)!r})\n"
                                 "except ValueError as error: print(error)")
                self.assertEqual(shown, 3 * f"{tool}\n" +
                                 "start(): executable is another one than the process has started with\n")

    def test_an_executable_that_is_not_there_is_a_missing_file(self):
        shown = in_child("try: gen.start(executable='nothing')\nexcept FileNotFoundError as e: print(e.filename)",
                         env={**os.environ, "KORVANE_DIR": "/nonesuch"})
        self.assertEqual(shown, "nothing\n")

    def test_a_root_may_be_named_in_other_ways(self):
        self.assertEqual(in_child("print(gen.start('/').root)"), "/\n")
        with tempfile.TemporaryDirectory() as scratch:
            link = pathlib.Path(scratch) / "link"
            link.symlink_to(ROOT / "libraries")
            self.assertEqual(in_child(f"print(gen.start('{link}/..').root)"), f"{ROOT}\n")

    def test_a_missing_root_is_a_missing_file(self):
        shown = in_child("try: gen.start('/no/such')\nexcept FileNotFoundError as e: print(e.filename)")
        self.assertEqual(shown, "/no/such\n")

    def test_a_file_is_no_root_and_leaves_the_choice(self):
        shown = in_child("try: gen.start('/etc/passwd')\nexcept FileNotFoundError as e: print(e.filename)\n"
                         f"print(gen.start({str(ROOT)!r}).root)")
        self.assertEqual(shown, f"/etc/passwd\n{ROOT}\n")

    def test_the_end_of_a_start_leaves_the_answers_to_others(self):
        shown = in_child(f"with gen.start({str(ROOT)!r}) as installation:\n"
                         f"    with gen.start({str(ROOT)!r}): pass\n"
                         "    print(installation.root)\n"
                         "print(gen.find('counter.v'))\n", cwd=PROJECT)
        self.assertEqual(shown, f"{ROOT}\n{PROJECT}/counter.v\n")

    def test_the_end_of_its_body_ends_a_start(self):
        shown = in_child("import ctypes\nmapped = open('/proc/self/maps').read().split()\n"
                         "library = ctypes.CDLL(next(name for name in mapped if 'korvane_gen_c.so' in name))\n"
                         f"with gen.start({str(ROOT)!r}): print(library.gen_c_is_started())\n"
                         "print(library.gen_c_is_started())")
        self.assertEqual(shown, "1\n0\n")

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
        self.assertEqual(caught.exception.answer, ROOT)


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
        self.assertIs(gen.find("adder.v"), gen.find("adder.v")) # kept, as they never change
        self.assertIsNone(gen.find("nothing.v"))
        self.assertEqual(gen.find_eda("cells.v"), ROOT / "eda/mentor/cells.v")

    def test_project(self):
        self.assertEqual(gen.project.directory, PROJECT)
        self.assertEqual(gen.project.database, pathlib.Path("db"))
        self.assertEqual(gen.project.libraries, [pathlib.Path("lib")])
        self.assertEqual(len(gen.project.user_libraries), 2)
        self.assertEqual(gen.project.relative(PROJECT / "adder.v"), pathlib.Path("adder.v"))
        self.assertIsNone(gen.project.relative("/etc/passwd"))
        self.assertEqual(gen.project.relative("adder.v"), pathlib.Path("adder.v"))

    def test_none_clears_a_property(self):
        gen.project.output = PROJECT / "db"
        for name in "database", "output", "libraries", "user_libraries":
            with self.subTest(name=name):
                setattr(gen.project, name, None)
        self.assertEqual((gen.project.database, gen.project.output), (None, PROJECT))
        self.assertEqual((gen.project.libraries, gen.project.user_libraries), ([], []))
        gen.project.directory = None
        self.assertEqual(gen.project.directory, pathlib.Path())

    def test_clear_frees_the_libraries_and_keeps_the_cache(self):
        gen.find_cached("adder.v")
        gen.project.clear()
        self.assertEqual((gen.project.libraries, gen.project.user_libraries), ([], []))
        self.assertEqual(len(gen.cache), 1)

    def test_libraries_for_outside_tools(self):
        self.assertIn(ROOT / "eda/mentor", gen.project.eda_libraries)
        self.assertIn(ROOT / "libraries/vhdl", gen.project.shipped_libraries)
        self.assertFalse(set(gen.project.eda_libraries) & set(gen.project.shipped_libraries))

    def test_only_so_many_paths_are_kept(self):
        first = gen.project.relative(PROJECT / "0")
        for number in range(1, 4096):
            gen.project.relative(PROJECT / str(number))
        self.assertIs(gen.project.relative(PROJECT / "0"), first)
        for number in range(4096, 2 * 4096):
            gen.project.relative(PROJECT / str(number))
        self.assertIsNot(gen.project.relative(PROJECT / "0"), first)

    def test_a_property_that_is_not_there_cannot_be_set(self):
        for settable, name in [(gen.project, "user_libs"), (gen.cache, "size"), (gen.start(ROOT), "path")]:
            with self.subTest(name=name):
                with self.assertRaisesRegex(AttributeError, f"no attribute '{name}'"):
                    setattr(settable, name, ["lib"])

    def test_a_directory_with_a_semicolon_is_one_directory(self):
        gen.project.libraries = ["a;b", "lib"]
        self.assertEqual(gen.project.libraries, [pathlib.Path("a;b"), pathlib.Path("lib")])

    def test_candidates_show_what_is_shadowed(self):
        found = gen.candidates("adder.v")
        self.assertEqual([check.standing for check in found], ["wins"] + 5 * ["shadowed"])
        self.assertEqual(found[-1].group, "shipped libraries")
        self.assertEqual(gen.find("adder.v"), found[0].path)

    def test_trace_lists_every_check(self):
        checks = gen.trace("mux.sv")
        self.assertTrue(checks[-1].there)
        self.assertFalse(any(check.there for check in checks[:-1]))
        self.assertEqual(checks[0].path, PROJECT / "mux.sv")

    def test_include_and_sources(self):
        found = gen.include("segments.vh", from_file="inc/display.vh", alias="/copy/display.vh")
        self.assertEqual(found, (pathlib.Path("inc/segments.vh"), pathlib.Path("/copy/segments.vh")))
        self.assertEqual(gen.include("segments.vh", from_file="inc/display.vh"),
                         (pathlib.Path("inc/segments.vh"), None))
        self.assertEqual(gen.include("mux.sv", from_file="inc/display.vh", alias="/copy/display.vh"),
                         (ROOT / "libraries/parablocks/gates/mux.sv", None))
        self.assertIsNone(gen.include("segments.vh"))
        for asked in gen.include, gen.trace_include:
            with self.assertRaisesRegex(ValueError, rf"{asked.__name__}\(\) argument 'alias' needs from_file"):
                asked("segments.vh", alias="/copy/display.vh")
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
        made = gen.temporary_file(".", number=42)
        self.assertEqual(made.name, "gen0000002a.tmp")
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


if __name__ == "__main__":
    main()
