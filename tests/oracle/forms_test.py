"""The forms of values against the documents they come from and against plain arithmetic."""

import unittest

import forms


class IpAddresses(unittest.TestCase):
    def check(self, text, expected):
        with self.subTest(text=text):
            self.assertEqual(forms.ip_string(forms.read_ip(text)), expected)

    def test_ipv4(self):
        for text in ("0.0.0.0", "192.0.2.1", "255.255.255.255"):
            self.check(text, text)

    def test_ipv6_as_rfc_5952_recommends(self):
        # Section 4.1: no leading zeros, but a group of zeros is a zero.
        self.check("2001:0db8:0000:0001:0002:0003:0004:0005", "2001:db8:0:1:2:3:4:5")
        # Section 4.2.1: shortened as far as can be.
        self.check("2001:db8:0:0:0:0:2:1", "2001:db8::2:1")
        self.check("0:0:0:0:0:0:0:0", "::")
        self.check("0:0:0:0:0:0:0:1", "::1")
        self.check("1:0:0:0:0:0:0:0", "1::")
        # Section 4.2.2: one group alone is not shortened.
        self.check("2001:db8::1:1:1:1:1", "2001:db8:0:1:1:1:1:1")
        self.check("::2:3:4:5:6:7:8", "0:2:3:4:5:6:7:8")
        # Section 4.2.3: the longest run, and of two that are as long the first.
        self.check("2001:0:0:1:0:0:0:1", "2001:0:0:1::1")
        self.check("2001:db8:0:0:1:0:0:1", "2001:db8::1:0:0:1")
        # Section 4.3: lower case.
        self.check("2001:DB8::ABCD:EF", "2001:db8::abcd:ef")

    def test_only_ipv4_mapped_into_ipv6_shows_the_ipv4_address(self):
        self.check("::FFFF:C000:0201", "::ffff:192.0.2.1")
        self.check("0:0:0:0:0:ffff:192.0.2.1", "::ffff:192.0.2.1")
        self.check("::ffff:0:0", "::ffff:0.0.0.0")
        self.check("::ffff:ffff:ffff", "::ffff:255.255.255.255")
        self.check("::fffe:c000:201", "::fffe:c000:201")
        self.check("::1:ffff:c000:201", "::1:ffff:c000:201")
        self.check("2001:db8::192.0.2.1", "2001:db8::c000:201")

    def test_every_ipv4_address_comes_before_every_ipv6_address(self):
        texts = ["::", "255.255.255.255", "fe80::1", "10.0.0.2", "::ffff:0.0.0.1", "9.0.0.10"]
        self.assertEqual(
            sorted(texts, key=forms.read_ip),
            ["9.0.0.10", "10.0.0.2", "255.255.255.255", "::", "::ffff:0.0.0.1", "fe80::1"],
        )


class AddressesWithMask(unittest.TestCase):
    def test_one_with_mask_keeps_its_host_bits(self):
        for text, expected in (
            ("10.1.2.3/8", "10.1.2.3/8"),
            ("10.1.2.3/32", "10.1.2.3/32"),
            ("255.255.255.255/0", "255.255.255.255/0"),
            ("2001:DB8:0:0:0:0:0:1/64", "2001:db8::1/64"),
            ("::ffff:c000:201/128", "::ffff:192.0.2.1/128"),
        ):
            with self.subTest(text=text):
                self.assertEqual(forms.masked_ip_string(forms.read_masked_ip(text)), expected)

    def test_a_prefix_reads_and_writes_alike(self):
        for text, expected in (
            ("10.0.0.0/8", "10.0.0.0/8"),
            ("10.1.2.3/32", "10.1.2.3/32"),
            ("0.0.0.0/0", "0.0.0.0/0"),
            ("10.1.2.2/31", "10.1.2.2/31"),
            ("::/0", "::/0"),
            ("2001:DB8:0::/32", "2001:db8::/32"),
            ("2001:db8::1/128", "2001:db8::1/128"),
            ("::ffff:10.0.0.0/104", "::ffff:10.0.0.0/104"),
        ):
            with self.subTest(text=text):
                self.assertEqual(forms.masked_ip_string(forms.read_prefix(text)), expected)

    def test_a_prefix_with_host_bits_is_refused_and_told_what_was_meant(self):
        for text, meant in (
            ("10.1.2.3/8", "10.0.0.0/8"),
            ("10.1.2.3/31", "10.1.2.2/31"),
            ("10.1.2.3/0", "0.0.0.0/0"),
            ("2001:db8::1/64", "2001:db8::/64"),
            ("::1/127", "::/127"),
            ("FFFF::/1", "8000::/1"),
        ):
            with self.subTest(text=text):
                with self.assertRaisesRegex(ValueError, f" {meant} "):
                    forms.read_prefix(text)

    def test_all_of_the_text_has_to_be_one(self):
        for text in (
            "",
            "/",
            "/8",
            "10.0.0.0",
            "10.0.0.0/",
            "10.0.0.0/33",
            "10.0.0.0/08",
            "10.0.0.0/+8",
            "10.0.0.0/-1",
            "10.0.0.0/8 ",
            " 10.0.0.0/8",
            "10.0.0.0/8/8",
            "10.0.0.0/255.0.0.0",
            "10.0.0/8",
            "010.0.0.0/8",
            "::/129",
            "::/1000",
            "::/\u0660",
        ):
            with self.subTest(text=text):
                with self.assertRaises(ValueError):
                    forms.read_masked_ip(text)
                with self.assertRaises(ValueError):
                    forms.read_prefix(text)

    def test_they_sort_by_address_and_then_by_length(self):
        texts = ["::/0", "10.0.0.0/16", "9.0.0.0/32", "::/128", "10.0.0.0/8", "255.0.0.0/8"]
        self.assertEqual(
            sorted(texts, key=forms.read_prefix),
            ["9.0.0.0/32", "10.0.0.0/8", "10.0.0.0/16", "255.0.0.0/8", "::/0", "::/128"],
        )


class EntryNames(unittest.TestCase):
    def test_the_number_at_the_start_counts(self):
        for name, vni in (
            ("0", 0),
            ("10", 10),
            ("16777215", 16777215),
            ("010", 10),
            ("+20", 20),
            ("-0", 0),
            ("12x", 12),
            ("12 13", 12),
            ("12.13", 12),
            ("0x10", 0),
            (" 7", 7),
            ("\t\n\v\f\r 7", 7),
        ):
            with self.subTest(name=name):
                self.assertEqual(forms.entry_vni(name), vni)
                self.assertEqual(forms.entry_vni(name, without_number=0), vni)

    def test_without_a_number_it_depends(self):
        # The last two: a blank and a digit, but of no kind that C knows.
        for name in ("", " ", "abc", "x12", "-", "+-1", "- 1", "\u00a07", "\u0667"):
            with self.subTest(name=name):
                self.assertEqual(forms.entry_vni(name, without_number=0), 0)
                with self.assertRaises(forms.Failure):
                    forms.entry_vni(name)

    def test_what_is_no_vni_fails(self):
        for name in ("16777216", "-1", "4294967306", "-4294967286", "9" * 30, "-" + "9" * 30):
            with self.subTest(name=name):
                with self.assertRaises(forms.Failure):
                    forms.entry_vni(name)
                with self.assertRaises(forms.Failure):
                    forms.entry_vni(name, without_number=0)


class OtherForms(unittest.TestCase):
    def test_ethernet_addresses(self):
        for text in ("00:1c:73:0A:0b:0c", "00-1C-73-0a-0b-0c", "001c.730a.0B0C"):
            mac = forms.read_mac(text)
            self.assertEqual(forms.mac_string(mac), "00:1c:73:0a:0b:0c")
            self.assertEqual(forms.mac_display(mac), "001c.730a.0b0c")

    def test_vnis(self):
        for decimal, dotted, vni in (
            ("0", "0.0.0", 0),
            ("4098", "0.16.2", 4098),
            ("16777215", "255.255.255", 16777215),
        ):
            self.assertEqual((forms.read_vni(decimal), forms.read_vni(dotted)), (vni, vni))
            self.assertEqual(forms.vni_string(vni, False), decimal)
            self.assertEqual(forms.vni_string(vni, True), dotted)

    def test_numbers_of_32_bits_are_signed(self):
        for number, signed in ((0, 0), (2147483647, 2147483647), (2147483648, -2147483648),
                               (4294967295, -1)):
            self.assertEqual(forms.signed32(number), signed)

    def test_columns_are_filled_and_cut_by_bytes(self):
        row = b"%-4.4b|%-2b|%-3.2b\n"
        self.assertEqual(forms.printed(row, "abc", "", "d"), b"abc |  |d  \n")
        self.assertEqual(forms.printed(row, "abcde", "wide", "xyz"), b"abcd|wide|xy \n")
        self.assertEqual(forms.printed(row, "abc\u00e9", "%d", "\u00e9"), b"abc\xc3|%d|\xc3\xa9 \n")

    def test_names_are_escaped_where_json_demands_it_and_nowhere_else(self):
        name = 'q"b\\s/n\nt\tr\rb\bf\fe\x1bu\x1fd\x7f\u00e9\u8449\U0001f33f%'
        self.assertEqual(
            forms.document({name: {}, "last": []}, pretty=False).decode(),
            '{"q\\"b\\\\s/n\\nt\\tr\\rb\\bf\\fe\\u001bu\\u001fd\x7f\u00e9\u8449\U0001f33f%":{},'
            '"last":[]}\n',
        )


if __name__ == "__main__":
    unittest.main()
