"""Wrong arguments from Python: every function names them, and says why."""

import inspect
import unittest

import korvane_gen as gen
from korvane_gen import _gen
from python_support import ROOT, SCRATCH, main


class WrongArguments(unittest.TestCase):
    # One good argument for each parameter of a function, by what its name stands for.
    GOOD = {"number": 1, "radix": 10, "group": 1, "seconds": 1, "ignore_case": 0, "upper": 0,
            "white_space": 0, "part": 0, "shipped_only": 0, "eda": 0, "all": 0, "modules": 0, "details": 0,
            "memory": 0, "notice": 0, "redo": 0, "mask": 1, "low": 0.0, "high": 1.0, "bins": 1, "item": 0.5,
            "watch": _gen.stopwatch_create(), "undo": _gen.undo_create("."), "flags": _gen.flags_create(),
            "histogram": _gen.histogram_create(0, 1, 1)}
    FUNCTIONS = {
        "start": "root executable", "library": "number", "set_project": "directory",
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
    WITHOUT = {"finish", "reports", "where", "installation", "libraries", "device_files", "project", "file_types",
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
                        with self.assertRaisesRegex(ValueError, rf"argument '{name}' contains a null"):
                            getattr(_gen, function)(**{**good, name: "a\0b"})
                        with self.assertRaisesRegex(ValueError, rf"argument '{name}' contains a character that no"):
                            getattr(_gen, function)(**{**good, name: "a\ud800b"})
                    elif isinstance(good[name], int):
                        with self.assertRaisesRegex(OverflowError, rf"argument '{name}' does not fit"):
                            getattr(_gen, function)(**{**good, name: 2**70})
                    elif isinstance(good[name], float):
                        with self.assertRaisesRegex(OverflowError, rf"argument '{name}' does not fit"):
                            getattr(_gen, function)(**{**good, name: 2**2000})

    def test_what_takes_no_arguments_says_so(self):
        for function in self.WITHOUT:
            with self.subTest(function=function):
                with self.assertRaisesRegex(TypeError, r"takes (0|no) arguments"):
                    getattr(_gen, function)(1)

    def test_every_wrong_argument_of_the_package_is_named(self):
        asked = 0
        for called, function in self.callables():
            parameters = inspect.signature(function).parameters
            good = {name: self.GOOD.get(name, "text") for name, parameter in parameters.items()
                    if parameter.kind in (parameter.POSITIONAL_OR_KEYWORD, parameter.KEYWORD_ONLY)}
            for name in good:
                with self.subTest(called=called, argument=name):
                    asked += 1
                    with self.assertRaisesRegex(TypeError, rf"argument '{name}' must be"):
                        made = function(**{**good, name: object()})
                        with made: # what begins with its body
                            pass
        self.assertGreater(asked, 60)

    @staticmethod
    def callables():
        """What users call: functions, methods, and classes that they make."""
        objects = {"project": gen.project, "start()": gen.start(ROOT), "Flags": gen.Flags(),
                   "UndoFile": gen.UndoFile(SCRATCH.name), "Histogram": gen.Histogram(0, 1),
                   "UndoSection": gen.UndoFile(SCRATCH.name).section("s")}
        for name in gen.__all__:
            if inspect.isfunction(function := getattr(gen, name)):
                yield name, function
        for name, each in objects.items():
            for method, function in inspect.getmembers(each, inspect.ismethod):
                if method[0] != "_":
                    yield f"{name}.{method}", function
        yield from (("UndoFile", gen.UndoFile), ("Histogram", gen.Histogram))

    def test_messages_have_the_names_that_users_know(self):
        file = gen.UndoFile(SCRATCH.name)
        with file.section("s") as section:
            section.undo("u")
        followed = file.section("followed")
        file.section("last")
        for call, complaint in [
                (lambda: gen.candidates(5), "trace() argument 'name' must be str, bytes or a path"),
                (lambda: setattr(gen.project, "directory", 5), "project.directory argument 'directory' must be"),
                (lambda: gen.project.relative(5), "project.relative() argument 'path' must be"),
                (lambda: gen.UndoFile(5), "UndoFile() argument 'directory' must be"),
                (lambda: section.redo("r"), "UndoSection: section has not begun or is over"),
                (lambda: followed.redo("r"), "UndoSection: section has not begun or is over"),
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
        for directories in (5, [1], ["lib", None]):
            with self.assertRaisesRegex(TypeError, "library directories must be paths"):
                gen.project.libraries = directories
            with self.assertRaisesRegex(TypeError, "library directories must be paths"):
                gen.project.user_libraries = directories

    def test_what_does_not_fit_is_named(self):
        for call, complaint in [
                (lambda: gen.write_integer(1, 37), "radix is not from 2 to 36"),
                (lambda: gen.message("%2", "a"), "argument 2 is missing"),
                (lambda: gen.message("%1!d!", "x"), "argument 1, \"x\", is nothing that %d can print"),
                (lambda: gen.wildcard_matches("a{", "a"), "makes no valid expression"),
                (lambda: gen.notice_lines(gen.Notice.BANNER, "\0"), "contains a null character"),
                (lambda: gen.message("%1", "a\0b"), "argument 'arguments' contains a null character"),
                (lambda: gen.natural_key("a\0b"), "argument 'text' contains a null character"),
                (lambda: _gen.notice(4), "notice is none of the four")]:
            with self.assertRaisesRegex(ValueError, complaint):
                call()


if __name__ == "__main__":
    main()
