library ieee;
use ieee.std_logic_1164.all;

entity debounce is
  generic (rounds : positive := 1000);
  port (clk, button : in std_logic; pressed : out std_logic := '0');
end entity;

architecture counting of debounce is
  signal steady : natural range 0 to rounds := 0;
begin
  process (clk)
  begin
    if rising_edge(clk) then
      if button = pressed then
        steady <= 0;
      elsif steady = rounds then
        pressed <= button;
      else
        steady <= steady + 1;
      end if;
    end if;
  end process;
end architecture;
