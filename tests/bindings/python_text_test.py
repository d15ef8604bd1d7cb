"""Text, time, machine and editing from Python."""

import os
import pickle
import unittest

import korvane_gen as gen
from python_support import PROJECT, in_child, main


class Text(unittest.TestCase):
    def test_conditions(self):
        self.assertEqual(gen.condition("(|top|a = 1) && (time > 10ns)"),
                         "LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))")
        with self.assertRaises(gen.ConditionError) as caught:
            gen.condition("a == 1")
        self.assertEqual(caught.exception.diagnostics, ["Missing left hand side of equation"])
        self.assertEqual(caught.exception.prefix, "EQUAL_TO(HPATH(a),)")
        self.assertEqual(caught.exception.reports, [])
        with self.assertRaises(gen.ConditionError) as caught:
            gen.condition("a) = (b")
        self.assertEqual({report.source for report in caught.exception.reports}, {"gen_bp_parser"})
        with self.assertRaises(gen.InternalError) as caught:
            gen.condition(")")
        self.assertEqual(caught.exception.answer, ("", ""))

    def test_exceptions_come_back_from_another_process(self):
        for condition in ("a) = (b", ")"):
            with self.assertRaises(gen.Error) as caught:
                gen.condition(condition)
            copy = pickle.loads(pickle.dumps(caught.exception))
            self.assertEqual((type(copy), str(copy), vars(copy)),
                             (type(caught.exception), str(caught.exception), vars(caught.exception)))

    def test_tokens_and_tree_of_a_condition(self):
        self.assertEqual([token.name for token in gen.condition_tokens("a = time")],
                         ["path", "=", "time"])
        self.assertEqual(gen.condition_tree("a = 1"),
                         [(0, "EQUAL_TO"), (1, "HPATH a"), (1, "BUS 1")])
        with self.assertRaisesRegex(gen.ConditionError, "Missing left hand side of equation"):
            gen.condition_tree("a == 1")
        with self.assertRaises(gen.ConditionError) as caught:
            gen.condition_tree("a) = (b")
        self.assertEqual([report.source for report in caught.exception.reports], ["gen_bp_parser"])
        with self.assertRaises(gen.InternalError):
            gen.condition_tree(")")

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


    def test_a_text_without_room_for_its_answer_is_an_exception(self):
        shown = in_child(
            "import resource\ntext = 'A' * (64 << 20)\n"
            "used = int(open('/proc/self/statm').read().split()[0]) * resource.getpagesize()\n"
            "resource.setrlimit(resource.RLIMIT_AS, (used + (32 << 20), -1))\n"
            "try: gen.fold(text)\nexcept MemoryError: print(gen.fold('STILL THERE'))")
        self.assertEqual(shown, "still there\n")


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
        self.assertRegex(gen.usage_report(memory=True)[0], "^python  ")
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

    def test_a_section_that_an_exception_leaves(self):
        file = gen.UndoFile(PROJECT)
        section = file.section("Fails")
        section.undo("dropped")
        with self.assertRaises(KeyError):
            with section:
                raise KeyError
        with self.assertRaisesRegex(ValueError, "section has not begun or is over"):
            section.undo("lost")

    def test_a_section_that_another_has_followed(self):
        file = gen.UndoFile(PROJECT)
        one = file.section("one")
        two = file.section("two")
        for add in one.undo, one.redo:
            with self.assertRaisesRegex(ValueError, "section has not begun or is over"):
                add("lost")
        with two:
            two.undo("kept")
        with self.assertRaisesRegex(ValueError, "section has not begun or is over"):
            with file.section("outer") as outer:
                outer.undo("dropped")
                with file.section("inner") as inner:
                    inner.undo("kept")
        with file.section("last") as last:
            last.undo("kept")
            with self.assertRaises(KeyError):
                with outer:
                    raise KeyError
        self.assertEqual([line for line in file.commit().read_text().split("\n")
                          if line in ("one", "two", "outer", "inner", "last", "lost", "dropped")],
                         ["two", "inner", "last"])
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
        self.assertEqual(len(gen.Histogram(0, 1).bins), 10)


if __name__ == "__main__":
    main()
