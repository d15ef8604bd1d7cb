library ieee;
use ieee.std_logic_1164.all;

-- Words of the widths that the parablocks are made for.
package logic_words is
  subtype byte is std_logic_vector(7 downto 0);
  subtype word is std_logic_vector(31 downto 0);
  function parity (value : std_logic_vector) return std_logic;
end package;

package body logic_words is
  function parity (value : std_logic_vector) return std_logic is
    variable odd : std_logic := '0';
  begin
    for i in value'range loop
      odd := odd xor value(i);
    end loop;
    return odd;
  end function;
end package body;
