"""Whether scripts/bench and scripts/make-certificates do what they say. Usage: scripts_test.py SOURCE-FOLDER"""
import os
import pathlib
import re
import stat
import subprocess
import sys
import tempfile
import unittest

SCRIPTS = pathlib.Path(sys.argv.pop(1)) / "scripts"


def run(*arguments, **options):
    return subprocess.run([str(each) for each in arguments], capture_output=True, text=True, check=False, **options)


class Bench(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.addCleanup(self.temporary.cleanup)
        self.build = pathlib.Path(self.temporary.name)
        (self.build / "bench").mkdir()

    def program(self, name, text):
        path = self.build / "bench" / name
        path.write_text("#!/bin/sh\necho run >> %s.runs\n%s\n" % (self.build / name, text))
        path.chmod(0o755)

    def runs(self, name):
        return len((self.build / (name + ".runs")).read_text().splitlines())

    def test_a_broken_promise_is_measured_once_and_fails(self):
        # The second time it would be kept.
        self.program("Flaky", "[ $(wc -l < %s/Flaky.runs) -gt 1 ]" % self.build)
        self.program("Sound", "true")
        ended = run(SCRIPTS / "bench", self.build)
        self.assertEqual(ended.returncode, 1)
        self.assertEqual(self.runs("Flaky"), 1)
        self.assertEqual(self.runs("Sound"), 1)
        self.assertIn("promises broken: Flaky\n", ended.stdout)

    def test_kept_promises_are_fine(self):
        self.program("Sound", "true")
        ended = run(SCRIPTS / "bench", self.build)
        self.assertEqual(ended.returncode, 0, ended.stderr)
        self.assertIn("all promises kept", ended.stdout)


class MakeCertificates(unittest.TestCase):
    FILES = ["authority.key", "authority.pem", "controller.key", "controller.pem", "workbench.key", "workbench.pem"]

    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.addCleanup(self.temporary.cleanup)
        self.folder = pathlib.Path(self.temporary.name) / "certificates"

    def make(self, *names):
        ended = run(SCRIPTS / "make-certificates", self.folder, *names)
        self.assertEqual(ended.returncode, 0, ended.stderr)

    def content(self):
        return {path.name: path.read_bytes() for path in self.folder.iterdir()}

    def verifies(self, name, purpose):
        return run("openssl", "verify", "-CAfile", self.folder / "authority.pem", "-purpose", purpose,
                   self.folder / name).returncode == 0

    def names(self):
        text = run("openssl", "x509", "-in", self.folder / "controller.pem", "-noout", "-ext", "subjectAltName").stdout
        return sorted(re.findall(r"(?:DNS|IP Address):[^,\s]+", text))

    def test_makes_what_it_lists_and_nothing_else(self):
        self.make("localhost")
        self.assertEqual(sorted(self.content()), self.FILES)

    def test_each_certificate_is_for_its_side(self):
        self.make("localhost")
        self.assertTrue(self.verifies("controller.pem", "sslserver"))
        self.assertFalse(self.verifies("controller.pem", "sslclient"))
        self.assertTrue(self.verifies("workbench.pem", "sslclient"))
        self.assertFalse(self.verifies("workbench.pem", "sslserver"))

    def test_keys_fit_their_certificates(self):
        self.make("localhost")
        for name in ("authority", "controller", "workbench"):
            of_key = run("openssl", "pkey", "-in", self.folder / (name + ".key"), "-pubout").stdout
            of_certificate = run("openssl", "x509", "-in", self.folder / (name + ".pem"), "-noout", "-pubkey").stdout
            self.assertTrue(of_key)
            self.assertEqual(of_key, of_certificate)

    def test_keys_are_readable_for_their_owner_only(self):
        previous = os.umask(0)
        self.addCleanup(os.umask, previous)
        for again in ("first time", "second time"):
            self.make("localhost")
            for name in self.FILES:
                if name.endswith(".key"):
                    mode = stat.S_IMODE((self.folder / name).stat().st_mode)
                    self.assertEqual(oct(mode), oct(0o600), name + ", " + again)
        self.assertEqual(stat.S_IMODE(self.folder.stat().st_mode) & 0o077, 0)

    def test_the_authority_is_used_again_and_the_rest_replaced(self):
        self.make("first.example")
        first = self.content()
        self.make("second.example")
        second = self.content()
        for name in self.FILES:
            if name.startswith("authority"):
                self.assertEqual(first[name], second[name])
            else:
                self.assertNotEqual(first[name], second[name])
        self.assertEqual(self.names(), ["DNS:second.example"])
        (self.folder / "first.pem").write_bytes(first["controller.pem"])
        self.assertTrue(self.verifies("first.pem", "sslserver"))
        self.assertTrue(self.verifies("controller.pem", "sslserver"))
        serials = {run("openssl", "x509", "-in", self.folder / name, "-noout", "-serial").stdout
                   for name in ("first.pem", "controller.pem", "workbench.pem")}
        self.assertEqual(len(serials), 3)

    def test_half_an_authority_is_made_anew(self):
        self.make("localhost")
        (self.folder / "authority.key").unlink()
        self.make("localhost")
        self.assertTrue(self.verifies("controller.pem", "sslserver"))

    def test_names_and_addresses_of_both_kinds(self):
        self.make("plc-1", "10.0.0.7", "::1", "fe80::1:2", "7.example.org")
        self.assertEqual(self.names(), ["DNS:7.example.org", "DNS:plc-1", "IP Address:0:0:0:0:0:0:0:1",
                                        "IP Address:10.0.0.7", "IP Address:FE80:0:0:0:0:0:1:2"])

    def test_without_a_name_it_tells_how_to_use_it(self):
        for arguments in ((), (self.folder,)):
            ended = run(SCRIPTS / "make-certificates", *arguments)
            self.assertEqual(ended.returncode, 2)
            self.assertIn("scripts/make-certificates DIRECTORY NAME-OR-ADDRESS...", ended.stderr)
            for name in self.FILES:
                self.assertIn(name, ended.stderr)
            self.assertNotIn("#", ended.stderr)
            self.assertFalse(self.folder.exists())

    def test_a_name_that_is_none_is_told_and_replaces_nothing(self):
        self.make("localhost")
        before = self.content()
        for name in ("1.2.3", "fe80::strange", "999.0.0.1"):
            ended = run(SCRIPTS / "make-certificates", self.folder, name)
            self.assertNotEqual(ended.returncode, 0)
            self.assertIn(name, ended.stderr)
            self.assertEqual(self.content(), before)

    def test_tells_when_openssl_is_missing(self):
        ended = run("/bin/sh", SCRIPTS / "make-certificates", self.folder, "localhost", env={"PATH": "/nowhere"})
        self.assertEqual(ended.returncode, 1)
        self.assertIn("openssl is not installed", ended.stderr)


if __name__ == "__main__":
    unittest.main()
