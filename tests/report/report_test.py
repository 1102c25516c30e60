#!/usr/bin/python3
"""report_test.py PLANTED-PAGES: the report of a planted bank, read, sorted, filtered, darkened and printed in Chromium.

The driver's Python package belongs to the system's own interpreter.
"""
import os
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

os.environ['SE_OFFLINE'] = 'true'
from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.select import Select

PLANTED = ['あ.wav', 'か.wav', '<img src=x onerror=alert(1)>&"\'.wav', '{{rows}}.wav', 'cut.wav', 'refused.wav',
           'silent.wav', 'byte \ufffd.wav', 'アカ.wav', 'low\\ra 10.wav', 'low\\ra 9.wav', 'all.wav']
SUMS = {'all': '12', 'with': '9', 'none': '1', 'bad': '2', 'marked': '3', 'findings': '11'}
folder = tempfile.TemporaryDirectory()


def browser(*arguments):
    options = webdriver.ChromeOptions()
    for argument in ['--headless=new', '--no-sandbox', '--disable-dev-shm-usage', '--window-size=1360,900', *arguments]:
        options.add_argument(argument)
    options.set_capability('goog:loggingPrefs', {'browser': 'ALL', 'performance': 'ALL'})
    return webdriver.Chrome(service=Service('/usr/bin/chromedriver'), options=options)


class ReportTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.driver = browser()

    @classmethod
    def tearDownClass(cls):
        cls.driver.quit()

    def open(self, page):
        self.driver.execute_cdp_cmd('Emulation.setEmulatedMedia', {'media': '', 'features': []})
        self.driver.get(f'file://{folder.name}/{page}.html')

    def names(self):
        """Of the rows that are shown, from top to bottom."""
        return self.driver.execute_script(
            "return [...document.querySelectorAll('tbody tr')].filter((row) => row.getClientRects().length > 0)"
            ".map((row) => row.cells[0].textContent)")

    def find(self, css):
        return self.driver.find_element(By.CSS_SELECTOR, css)

    def waitFor(self, read, wanted):
        end = time.monotonic() + 10
        while read() != wanted and time.monotonic() < end:
            time.sleep(0.02)
        self.assertEqual(read(), wanted)

    def style(self, css, name):
        return self.driver.execute_script(
            'return getComputedStyle(document.querySelector(arguments[0]))[arguments[1]]', css, name)

    def testTellsWhatWasPlantedAndAsksForNothingElse(self):
        for page, lang, reason in [('english', 'en', 'An octave too high'), ('japanese', 'ja', '1 オクターブ高すぎます')]:
            self.driver.get_log('performance')
            self.driver.get_log('browser')
            self.open(page)
            self.assertEqual(self.names(), PLANTED)
            for name, value in SUMS.items():
                self.assertEqual(self.find(f'#sum-{name}').text, value, name)
            self.assertEqual(self.find('html').get_attribute('lang'), lang)
            self.assertIn(f'{reason}: 2', self.find('.reasons').text)
            self.assertIn(reason, self.find('tbody tr:nth-child(2)').text)
            self.assertLess(self.find('#totals').location['y'], self.find('table').location['y'])
            marked = self.driver.find_elements(By.CSS_SELECTOR, 'tbody tr:nth-child(2) svg rect')
            self.assertEqual([rect.get_attribute('class') for rect in marked], ['m5', 'm2'])
            self.assertGreater(marked[0].rect['width'], 10)
            links = [a.get_attribute('href') for a in self.driver.find_elements(By.CSS_SELECTOR, 'tbody a')]
            self.assertTrue(links[7].endswith('/byte%20%FF.wav') and links[9].endswith('/low/ra%2010.wav'), links)
            asked = [entry['message'] for entry in self.driver.get_log('performance')
                     if '"Network.requestWillBeSent"' in entry['message']]
            self.assertEqual(len(asked), 1, asked)
            self.assertEqual(self.driver.get_log('browser'), [])

    def testSortsByEachColumnWithClicksAndKeys(self):
        self.open('english')
        heads = self.driver.find_elements(By.CSS_SELECTOR, 'thead th')
        self.assertEqual(len(heads), 9)
        for index, head in enumerate(heads):
            values = dict(self.driver.execute_script(
                "return [...document.querySelectorAll('tbody tr')].map((row) => [row.cells[0].textContent,"
                "row.cells[arguments[0]].dataset.v ?? null])", index))
            orders = {}
            for _ in range(2):
                button = head.find_element(By.TAG_NAME, 'button')
                button.send_keys(Keys.ENTER) if index % 2 else button.click()
                orders[head.get_attribute('aria-sort')] = self.names()
            self.assertEqual(len(self.driver.find_elements(By.CSS_SELECTOR, '[aria-sort]')), 1)
            self.assertEqual(set(orders), {'ascending', 'descending'}, index)
            for direction, names in orders.items():
                self.assertCountEqual(names, PLANTED)
                if head.get_attribute('data-sort') == 'number':
                    told = [float(values[name]) for name in names if values[name] is not None]
                    self.assertEqual(told, sorted(told, reverse=direction == 'descending'), (index, direction))
                    self.assertTrue(all(values[name] is None for name in names[len(told):]), 'no value comes last')
        self.driver.execute_script("document.querySelector('thead button').click()")
        names = self.names()
        self.assertLess(names.index('low\\ra 9.wav'), names.index('low\\ra 10.wav'), 'numbers in names count')
        self.driver.execute_script("document.querySelectorAll('thead button')[8].click()")
        self.assertEqual(set(self.names()[:2]), {'cut.wav', 'refused.wav'}, 'what is worst comes first')

    def testFiltersByNameAndByWhatIsWrong(self):
        self.open('english')
        search, choice = self.find('#search'), Select(self.find('#choice'))
        shown = lambda: self.find('#shown').text
        self.assertEqual(shown(), 'Shown: 12 of 12')
        for typed, names in [('か', ['か.wav', 'アカ.wav']), ('RA LOW', ['low\\ra 10.wav', 'low\\ra 9.wav']),
                             ('ｃｕｔ', ['cut.wav']), ('.*', [])]:
            search.send_keys(Keys.CONTROL, 'a')
            search.send_keys(typed)
            self.waitFor(self.names, names)
            self.waitFor(shown, f'Shown: {len(names)} of 12')
        search.send_keys(Keys.CONTROL, 'a')
        search.send_keys(Keys.DELETE)
        self.waitFor(self.names, PLANTED)
        for value, count in [('marked', 3), ('none', 1), ('bad', 2), ('m5', 2), ('m0', 1)]:
            choice.select_by_value(value)
            self.assertEqual(len(self.names()), count, value)
            self.assertIn(f'({count})', choice.first_selected_option.text)
        search.send_keys('か')
        self.waitFor(self.names, [])
        self.find('button[type=reset]').click()
        self.waitFor(self.names, PLANTED)

    def testIsDarkOnADarkDesktopAndPrintsWithoutControls(self):
        self.open('english')
        light = self.style('body', 'backgroundColor')
        dark = [{'name': 'prefers-color-scheme', 'value': 'dark'}]
        self.driver.execute_cdp_cmd('Emulation.setEmulatedMedia', {'features': dark})
        self.assertNotEqual(self.style('body', 'backgroundColor'), light)
        self.assertGreater(min(self.channels('body', 'color')), 150)
        self.assertGreater(min(self.channels('svg path:last-child', 'stroke')), 100)
        self.driver.execute_cdp_cmd('Emulation.setEmulatedMedia', {'media': 'print', 'features': dark})
        self.assertLess(max(self.channels('body', 'color')), 100, 'dark ink on paper')
        self.assertFalse(self.find('#controls').is_displayed())
        self.assertEqual(self.style('tbody tr', 'breakInside'), 'avoid')
        self.assertEqual(self.style('thead', 'display'), 'table-header-group', 'on each sheet')
        self.driver.execute_script("dispatchEvent(new Event('beforeprint'))")
        self.assertTrue(self.find('tbody details li').is_displayed(), 'paper does not unfold')
        sheets = self.driver.execute_cdp_cmd('Page.printToPDF', {'landscape': True})['data']
        self.assertGreater(len(sheets), 10000)

    def channels(self, css, name):
        color = self.style(css, name)
        return [int(part) for part in color[color.index('(') + 1:-1].split(',')[:3]]

    def testIsAWholeTableToAScreenReader(self):
        self.open('japanese')
        tree = self.driver.execute_cdp_cmd('Accessibility.getFullAXTree', {})['nodes']
        roles = [node.get('role', {}).get('value') for node in tree if not node.get('ignored')]
        self.assertEqual(roles.count('table'), 1)
        self.assertEqual(roles.count('columnheader'), 9)
        self.assertEqual(roles.count('rowheader'), len(PLANTED))
        self.assertEqual(roles.count('row'), len(PLANTED) + 1)
        # Some versions of the browser leave the blank between a label's words and its box at the end of the name.
        named = [node['name']['value'].strip() for node in tree
                 if node.get('role', {}).get('value') in ('searchbox', 'combobox', 'image')]
        self.assertTrue({'名前で検索', '表示', '曲線: あ.wav'} <= set(named), named)

    def testFiveThousandRowsAreSortedAndFilteredAtOnce(self):
        self.open('many')
        self.assertEqual(self.find('#sum-all').text, '5,000')
        self.assertEqual(self.find('#sum-none').text, '100')
        took = self.driver.execute_script(
            "const begin = performance.now(); document.querySelectorAll('thead button')[2].click();"
            "document.body.offsetHeight; return performance.now() - begin")
        self.assertLess(took, 5000)
        Select(self.find('#choice')).select_by_value('marked')
        self.assertEqual(self.find('#shown').text, 'Shown: 500 of 5,000')

    def testIsCompleteWithoutAScript(self):
        driver = browser('--blink-settings=scriptEnabled=false')
        try:
            driver.get(f'file://{folder.name}/english.html')
            rows = driver.find_elements(By.CSS_SELECTOR, 'tbody tr')
            self.assertEqual(len([row for row in rows if row.is_displayed()]), len(PLANTED))
            self.assertFalse(driver.find_element(By.ID, 'controls').is_displayed())
            top = driver.find_element(By.ID, 'totals').location['y']
            self.assertLess(top, driver.find_element(By.TAG_NAME, 'table').location['y'])
        finally:
            driver.quit()


if __name__ == '__main__':
    subprocess.run([sys.argv.pop(1), folder.name], check=True)
    unittest.main(verbosity=2)
